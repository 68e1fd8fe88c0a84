#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <zol/spi/ZolReturnT.h>

namespace threadtest
{

/// What the host knows of the handle or the iterator that it uses.
enum class State
{
    Known,
    Unknown,
    Shared ///< other threads open and end it at any time
};

/// The codes that came, of one thread, held against those that may come.
class Tally
{
public:
    /// A code that may not come is kept as a violation. Throws if there is no such operation.
    void note(std::string_view operation, State state, ZolReturnT code);
    void noteViolation(std::string violation) { _violations.push_back(std::move(violation)); }

    void add(const Tally& other);
    const std::vector<std::string>& violations() const { return _violations; }
    unsigned long long calls() const;
    /// A line for each operation and state: the codes with their counts.
    void print(std::ostream& stream) const;
    /// The operations that were never called.
    std::vector<std::string> missing() const;

private:
    using Key = std::pair<std::string_view, State>;

    std::map<Key, std::map<ZolReturnT, unsigned long long>> _counts;
    std::vector<std::string> _violations;
};

} // namespace threadtest
