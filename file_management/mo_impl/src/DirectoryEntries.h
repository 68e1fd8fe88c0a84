#pragma once

#include "Handle.h"

#include <cstddef>
#include <dirent.h>
#include <memory>
#include <string>
#include <sys/types.h>

namespace ZolFileManagement
{

/// The entries of a directory, in its own order and without `.` and `..`, and what the directory says that
/// they are. Poco::DirectoryIterator doesn't tell that and makes a path of each entry.
class DirectoryEntries
{
public:
    DirectoryEntries() = default; // at its end
    DirectoryEntries(const DirectoryEntries&) = delete;
    DirectoryEntries& operator=(const DirectoryEntries&) = delete;

    /// Goes to the first entry; to be called once. False if the directory can't be opened, with the reason in
    /// errno.
    bool open(const std::string& directory);
    void close();

    bool isAtEnd() const { return _buffer == nullptr; }
    // These need an entry.
    const char* name() const { return static_cast<const char*>(entry().d_name); }
    /// As S_IFMT has it; 0 where the directory doesn't say.
    mode_t type() const { return static_cast<mode_t>(DTTOIF(entry().d_type)); }
    /// A directory that can't be read on has come to its end.
    void advance();

    bool isCutShort() const { return _isCutShort; }

private:
    const dirent64& entry() const { return *reinterpret_cast<const dirent64*>(_buffer.get() + _position); }
    void read();

    Handle _handle{-1};
    std::unique_ptr<char[]> _buffer;
    std::size_t _position = 0;
    std::size_t _end = 0; // of what is in the buffer
    bool _isCutShort = false;
};

} // namespace ZolFileManagement
