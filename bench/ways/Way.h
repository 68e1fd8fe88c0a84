#pragma once

#include "ways/Findings.h"
#include "ways/Task.h"

#include <cstddef>
#include <stdexcept>

namespace zolbench
{

/// This way doesn't do such work.
class NotOffered : public std::runtime_error
{
public:
    NotOffered()
        : std::runtime_error("not offered")
    {}
};

/// A way to do the work of the rows: the library's or one to compare it with. What it finds goes to
/// `findings` unless that is null; what it changes is on disk when it returns.
class Way
{
public:
    explicit Way(std::string name)
        : _name(std::move(name))
    {}
    Way(const Way&) = delete;
    Way& operator=(const Way&) = delete;
    virtual ~Way() = default;

    using Work = void (Way::*)(const Task&, Findings*);

    const std::string& name() const { return _name; }
    virtual bool worksInThisProcess() const { return true; } ///< so that its system calls can be counted

    virtual void browse(const Task&, Findings*) { throw NotOffered(); } ///< the names of the files
    virtual void count(const Task&, Findings*) { throw NotOffered(); }  ///< how many files
    virtual void files(const Task&, Findings*) { throw NotOffered(); }  ///< names, sizes, types, times
    virtual void create(const Task&, Findings*) { throw NotOffered(); } ///< each item, a directory
    virtual void remove(const Task&, Findings*) { throw NotOffered(); } ///< each item, a file
    virtual void removeMatching(const Task&, Findings*) { throw NotOffered(); } ///< files by expression
    /// Whether the whole tree below the directory has no file, so that it may go. It stays.
    virtual void checkEmpty(const Task&, Findings*) { throw NotOffered(); }
    virtual void exists(const Task&, Findings*) { throw NotOffered(); } ///< how many of the items
    virtual void size(const Task&, Findings*) { throw NotOffered(); }   ///< the sum of those of the items
    /// A transaction with nothing in it for each item.
    virtual void openAndClose(const Task&, Findings*) { throw NotOffered(); }

    /// The two halves of `create`, for ways that have them.
    virtual void intend(const Task&) { throw NotOffered(); }
    virtual void apply(const Task&, Findings*) { throw NotOffered(); }

private:
    std::string _name;
};

inline void note(Findings* findings, const char* entry)
{
    if (findings != nullptr)
    {
        findings->entries.emplace(entry);
    }
}

inline void note(Findings* findings, const char* name, std::uint64_t size)
{
    if (findings != nullptr)
    {
        findings->entries.insert(std::string(name) + ' ' + std::to_string(size));
    }
}

inline void note(Findings* findings, std::uint64_t number)
{
    if (findings != nullptr)
    {
        findings->number = number;
    }
}

} // namespace zolbench
