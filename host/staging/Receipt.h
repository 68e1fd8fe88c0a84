#pragma once

#include "staging/Preview.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zolhost
{

/// What became of a plan, found by looking at the disk after a commit: a component's code doesn't tell.
struct Receipt
{
    struct Item
    {
        enum class Result
        {
            Done,
            WasSo,  ///< it was gone, or a directory was there, before the commit
            Remains ///< still there, not there, or without its mode: `why` says
        };
        Preview::Item::Kind kind = Preview::Item::Kind::RemoveFile;
        std::string path; ///< as in the plan
        Result result = Result::Done;
        std::string why; ///< of what remains, in words for an operator
        mode_t mode = 0; ///< of a directory, as it is now
    };

    /// How the disk was before: what tells a directory that came back from one that stayed.
    class Before
    {
    public:
        explicit Before(const Preview& preview);

    private:
        friend Receipt receiptOf(const Preview& preview, const Before& before, const Progress& progress);
        struct Identity
        {
            dev_t device = 0;
            ino_t number = 0;
            std::int64_t born = 0; ///< nanoseconds; 0 if the file system doesn't know
            bool operator==(const Identity&) const = default;
        };
        static Identity identityOf(const std::string& path);

        std::vector<Identity> _identities; // one an item; number 0: wasn't there
    };

    std::vector<Item> items; ///< those of the preview
    std::size_t directoriesMade = 0;
    std::size_t directoriesRemoved = 0; ///< what went along counts, also in the three below
    std::size_t filesRemoved = 0;
    std::size_t othersRemoved = 0; ///< links, sockets and the like
    std::uint64_t bytesRemoved = 0;

    bool isComplete() const; ///< nothing remains
};

/// `preview` and `before` were taken right before the commit.
Receipt receiptOf(const Preview& preview, const Receipt::Before& before, const Progress& progress = {});

} // namespace zolhost
