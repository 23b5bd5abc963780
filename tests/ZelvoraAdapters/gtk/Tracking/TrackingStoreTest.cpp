#include "ZelvoraAdapters/gtk/Tracking/TrackingStore.h"

#include "ZelvoraAdapters/gtk/Tracking/ASIdentifierManager.h"
#include "ZelvoraContract/support/Record.h"
#include "ZelvoraContract/support/runOnThreads.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace zelvora::tests {

namespace {

using Status = platform::ATTrackingAuthorizationStatus;

class TrackingStoreTest : public testing::Test {
protected:
    TemporaryDirectory m_directory;
};

}

TEST_F(TrackingStoreTest, AtFirstNothingIsDeterminedOrWritten)
{
    auto const folder = m_directory.path() / "new";
    gtk::TrackingStore const store(folder);
    EXPECT_EQ(store.status(), Status::NotDetermined);
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST_F(TrackingStoreTest, EveryAnswerIsStored)
{
    for (auto const status : { Status::Authorized, Status::Denied, Status::Restricted, Status::NotDetermined }) {
        gtk::TrackingStore(m_directory.path()).setStatus(status);
        EXPECT_EQ(gtk::TrackingStore(m_directory.path()).status(), status);
    }
}

TEST_F(TrackingStoreTest, TheIdentifierIsMadeOnceAsAnUpperCaseUUID)
{
    auto const identifier = gtk::TrackingStore(m_directory.path()).identifier();
    EXPECT_EQ(identifier.size(), 36U);
    EXPECT_EQ(identifier.find_first_not_of("0123456789ABCDEF-"), std::string::npos) << identifier;
    gtk::TrackingStore again(m_directory.path());
    EXPECT_EQ(again.identifier(), identifier);
    EXPECT_EQ(again.identifier(), identifier);
    TemporaryDirectory const other;
    EXPECT_NE(gtk::TrackingStore(other.path()).identifier(), identifier);
}

TEST_F(TrackingStoreTest, TheAnswerAndTheIdentifierDoNotOverwriteEachOther)
{
    std::string identifier;
    {
        gtk::TrackingStore store(m_directory.path());
        store.setStatus(Status::Authorized);
        identifier = store.identifier();
    }
    {
        gtk::TrackingStore store(m_directory.path());
        EXPECT_EQ(store.status(), Status::Authorized);
        store.setStatus(Status::Denied);
    }
    gtk::TrackingStore store(m_directory.path());
    EXPECT_EQ(store.status(), Status::Denied);
    EXPECT_EQ(store.identifier(), identifier);
}

TEST_F(TrackingStoreTest, OnlyThisUserHasAccessToTheFolder)
{
    auto const folder = m_directory.path() / "a" / "b";
    gtk::TrackingStore(folder).setStatus(Status::Denied);
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(folder).permissions(), perms::owner_all);
    EXPECT_EQ(std::filesystem::status(folder / "tracking.ini").permissions(), perms::owner_read | perms::owner_write);
}

TEST_F(TrackingStoreTest, InvalidEntriesCountAsAbsent)
{
    for (auto const* const text :
        { "", "not a key file", "[Tracking]\nAuthorization=perhaps\nAdvertisingIdentifier=7\n",
            "[Other]\nAuthorization=authorized\n", "[Tracking]\nAuthorization=\xff\xfe\n" }) {
        m_directory.write("tracking.ini", text);
        gtk::TrackingStore store(m_directory.path());
        EXPECT_EQ(store.status(), Status::NotDetermined) << text;
        EXPECT_EQ(store.identifier().size(), 36U) << text;
    }
}

TEST_F(TrackingStoreTest, AnIdentifierInLowerCaseIsGivenInUpperCase)
{
    m_directory.write("tracking.ini", "[Tracking]\nAdvertisingIdentifier=0a1b2c3d-4e5f-4607-8899-aabbccddeeff\n");
    EXPECT_EQ(gtk::TrackingStore(m_directory.path()).identifier(), "0A1B2C3D-4E5F-4607-8899-AABBCCDDEEFF");
}

TEST_F(TrackingStoreTest, IfNothingCanBeWrittenTheAnswerIsValidForThisProcess)
{
    // A file in place of the folder: unlike missing permissions, it stops root too.
    auto const folder = m_directory.write("occupied", "") / "below";
    gtk::TrackingStore store(folder);
    testing::internal::CaptureStderr();
    store.setStatus(Status::Authorized);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("tracking.ini could not be written"), std::string::npos);
    EXPECT_EQ(store.status(), Status::Authorized);
    EXPECT_EQ(store.identifier(), store.identifier());
}

TEST_F(TrackingStoreTest, ManyThreadsGetTheSameIdentifier)
{
    gtk::TrackingStore store(m_directory.path());
    Record<std::string> identifiers;
    runOnThreads(4, [&](int) {
        store.setStatus(Status::Authorized);
        identifiers.add(store.identifier());
    });
    auto const all = identifiers.all();
    EXPECT_EQ(std::set(all.begin(), all.end()).size(), 1U);
}

TEST_F(TrackingStoreTest, TheManagerGivesTheIdentifierOnlyIfAuthorized)
{
    gtk::TrackingStore store(m_directory.path());
    gtk::ASIdentifierManager const manager(store);
    for (auto const status : { Status::NotDetermined, Status::Restricted, Status::Denied }) {
        store.setStatus(status);
        EXPECT_EQ(manager.advertisingIdentifier(), "00000000-0000-0000-0000-000000000000");
    }
    EXPECT_EQ(m_directory.read("tracking.ini").find("AdvertisingIdentifier"), std::string::npos);
    store.setStatus(Status::Authorized);
    EXPECT_EQ(manager.advertisingIdentifier(), store.identifier());
}

}
