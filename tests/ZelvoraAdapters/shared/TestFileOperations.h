#pragma once

#include "ZelvoraAdapters/shared/Files/FileOperations.h"

#include <fcntl.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::tests {

/// The system's files, with the failures that a test asks for and a record of what was done.
class TestFileOperations final : public shared::FileOperations {
public:
    using Base = shared::FileOperations;

    /// An error number that the calls give from now on for paths that end so; 0 ends it.
    void failOpening(std::string ending, int error) { set(m_openErrors, std::move(ending), error); }
    void failReading(std::string ending, int error) { set(m_readErrors, std::move(ending), error); }
    void failWriting(std::string ending, int error) { set(m_writeErrors, std::move(ending), error); }
    void failSyncing(std::string ending, int error) { set(m_syncErrors, std::move(ending), error); }
    void failTruncating(std::string ending, int error) { set(m_truncateErrors, std::move(ending), error); }
    void failRenaming(std::string ending, int error) { set(m_renameErrors, std::move(ending), error); }
    /// A failing read fails only from there on.
    void readBeforeFailing(::off_t size) { m_readBeforeFailing = size; }
    /// A failing write writes this much of what it was given before.
    void writeBeforeFailing(std::size_t count) { m_writtenBeforeFailing = count; }
    /// Called in the thread that syncs a file whose path ends so, before it is synced.
    void atSyncOf(std::string ending, std::function<void()> hook)
    {
        std::scoped_lock const lock(m_mutex);
        m_syncHook = { std::move(ending), std::move(hook) };
    }

    /// "write NAME", "sync NAME", "rename NAME", "truncate NAME", "remove NAME", "read NAME",
    /// "look at NAME" and "look for NAME", by the files' names.
    [[nodiscard]] std::vector<std::string> done() const
    {
        std::scoped_lock const lock(m_mutex);
        return m_done;
    }
    [[nodiscard]] long count(std::string const& deed) const
    {
        std::scoped_lock const lock(m_mutex);
        return std::ranges::count(m_done, deed);
    }
    void forget()
    {
        std::scoped_lock const lock(m_mutex);
        m_done.clear();
    }
    /// False where it does not come to that in half a minute.
    [[nodiscard]] bool waitFor(std::string const& deed, long times = 1) const
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(
            lock, std::chrono::seconds(30), [&] { return std::ranges::count(m_done, deed) >= times; });
    }

    int open(std::string const& path, int flags, ::mode_t mode) override
    {
        // A file that may not be written may be read all the same.
        auto const writes = (flags & O_ACCMODE) != O_RDONLY;
        if (auto const error = writes ? errorFor(m_openErrors, path) : 0)
            return fail(error);
        auto const file = Base::open(path, flags, mode);
        std::scoped_lock const lock(m_mutex);
        m_paths[file] = path;
        return file;
    }
    ::ssize_t read(int file, char* bytes, std::size_t count, ::off_t offset) override
    {
        auto const path = note("read", file);
        auto const error = errorFor(m_readErrors, path);
        if (error && offset >= m_readBeforeFailing)
            return fail(error);
        return Base::read(file, bytes, count, offset);
    }
    ::ssize_t write(int file, char const* bytes, std::size_t count, ::off_t offset) override
    {
        auto const path = note("write", file);
        auto const error = errorFor(m_writeErrors, path);
        if (!error)
            return Base::write(file, bytes, count, offset);
        auto const allowed = std::min(count, m_writtenBeforeFailing.exchange(0));
        return allowed > 0 ? Base::write(file, bytes, allowed, offset) : fail(error);
    }
    int truncate(int file, ::off_t size) override
    {
        auto const path = note("truncate", file);
        if (auto const error = errorFor(m_truncateErrors, path))
            return fail(error);
        return Base::truncate(file, size);
    }
    int sync(int file) override
    {
        auto const path = pathOf(file);
        if (auto const hook = syncHookFor(path))
            hook();
        auto const error = errorFor(m_syncErrors, path);
        auto const result = error ? fail(error) : Base::sync(file);
        note("sync", file);
        errno = error;
        return result;
    }
    int statusOfFile(int file, struct ::stat& status) override
    {
        note("look at", file);
        return Base::statusOfFile(file, status);
    }
    int statusOfPath(std::string const& path, struct ::stat& status) override
    {
        add("look for " + nameOf(path));
        return Base::statusOfPath(path, status);
    }
    int rename(std::string const& from, std::string const& to) override
    {
        if (auto const error = errorFor(m_renameErrors, from))
            return fail(error);
        auto const result = Base::rename(from, to);
        {
            std::scoped_lock const lock(m_mutex);
            for (auto& [file, path] : m_paths) {
                if (path == from)
                    path = to;
            }
        }
        add("rename " + nameOf(from));
        return result;
    }
    int remove(std::string const& path) override
    {
        auto const result = Base::remove(path);
        if (result == 0)
            add("remove " + nameOf(path));
        return result;
    }

private:
    using Errors = std::map<std::string, int>;

    void set(Errors& errors, std::string ending, int error)
    {
        std::scoped_lock const lock(m_mutex);
        errors[std::move(ending)] = error;
    }
    [[nodiscard]] int errorFor(Errors const& errors, std::string const& path) const
    {
        std::scoped_lock const lock(m_mutex);
        for (auto const& [ending, error] : errors) {
            if (path.ends_with(ending))
                return error;
        }
        return 0;
    }
    [[nodiscard]] std::function<void()> syncHookFor(std::string const& path) const
    {
        std::scoped_lock const lock(m_mutex);
        return m_syncHook.second && path.ends_with(m_syncHook.first) ? m_syncHook.second : nullptr;
    }
    static int fail(int error)
    {
        errno = error;
        return -1;
    }
    [[nodiscard]] std::string pathOf(int file) const
    {
        std::scoped_lock const lock(m_mutex);
        auto const found = m_paths.find(file);
        return found != m_paths.end() ? found->second : "";
    }
    static std::string nameOf(std::string const& path) { return path.substr(path.rfind('/') + 1); }
    std::string note(std::string const& deed, int file)
    {
        auto const path = pathOf(file);
        add(deed + " " + nameOf(path));
        return path;
    }
    void add(std::string deed)
    {
        {
            std::scoped_lock const lock(m_mutex);
            m_done.push_back(std::move(deed));
        }
        m_changed.notify_all();
    }

    std::mutex mutable m_mutex;
    std::condition_variable mutable m_changed;
    std::vector<std::string> m_done;
    std::map<int, std::string> m_paths;
    Errors m_openErrors;
    Errors m_readErrors;
    Errors m_writeErrors;
    Errors m_syncErrors;
    Errors m_truncateErrors;
    Errors m_renameErrors;
    std::atomic<::off_t> m_readBeforeFailing = 0;
    std::atomic<std::size_t> m_writtenBeforeFailing = 0;
    std::pair<std::string, std::function<void()>> m_syncHook;
};

}
