#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"

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

/// The real file system with injected failures. Records the calls.
class TestFileOperations final : public shared::FileOperations {
public:
    using Base = shared::FileOperations;

    /// Makes the calls for paths that end with `ending` fail with an error number; 0 ends that.
    void failOpening(std::string ending, int error) { set(m_openErrors, std::move(ending), error); }
    void failReading(std::string ending, int error) { set(m_readErrors, std::move(ending), error); }
    void failWriting(std::string ending, int error) { set(m_writeErrors, std::move(ending), error); }
    void failSyncing(std::string ending, int error) { set(m_syncErrors, std::move(ending), error); }
    void failTruncating(std::string ending, int error) { set(m_truncateErrors, std::move(ending), error); }
    void failRenaming(std::string ending, int error) { set(m_renameErrors, std::move(ending), error); }
    /// Failing reads succeed below this offset.
    void readBeforeFailing(::off_t size) { m_readBeforeFailing = size; }
    /// The next failing write writes this many bytes first.
    void writeBeforeFailing(std::size_t count) { m_writtenBeforeFailing = count; }
    /// Calls the hook before a file whose path ends with `ending` is synced, on the thread that syncs it.
    void atSyncOf(std::string ending, std::function<void()> hook)
    {
        std::scoped_lock const lock(m_mutex);
        m_syncHook = { std::move(ending), std::move(hook) };
    }

    /// "write NAME", "sync NAME", "rename NAME", "truncate NAME", "remove NAME", "read NAME",
    /// "fstat NAME" and "stat NAME", with the names of the files.
    [[nodiscard]] std::vector<std::string> calls() const
    {
        std::scoped_lock const lock(m_mutex);
        return m_calls;
    }
    [[nodiscard]] long count(std::string const& call) const
    {
        std::scoped_lock const lock(m_mutex);
        return std::ranges::count(m_calls, call);
    }
    void forget()
    {
        std::scoped_lock const lock(m_mutex);
        m_calls.clear();
    }
    /// False if that does not happen within half a minute.
    [[nodiscard]] bool waitFor(std::string const& call, long times = 1) const
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(
            lock, std::chrono::seconds(30), [&] { return std::ranges::count(m_calls, call) >= times; });
    }

    int open(std::string const& path, int flags, ::mode_t mode) override
    {
        // Only opening for writing fails: a read-only file can still be read.
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
        note("fstat", file);
        return Base::statusOfFile(file, status);
    }
    int statusOfPath(std::string const& path, struct ::stat& status) override
    {
        add("stat " + nameOf(path));
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
    std::string note(std::string const& call, int file)
    {
        auto const path = pathOf(file);
        add(call + " " + nameOf(path));
        return path;
    }
    void add(std::string call)
    {
        {
            std::scoped_lock const lock(m_mutex);
            m_calls.push_back(std::move(call));
        }
        m_changed.notify_all();
    }

    std::mutex mutable m_mutex;
    std::condition_variable mutable m_changed;
    std::vector<std::string> m_calls;
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
