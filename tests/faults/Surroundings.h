#pragma once

#include "support/FakeHost.h"
#include "support/FakeRepository.h"
#include "support/FakeZolea.h"
#include "support/LoadedLibrary.h"
#include "support/TemporaryTree.h"
#include "support/Transaction.h"

#include <memory>
#include <string>
#include <vector>

namespace faults
{

using Texts = std::vector<std::string>;

/// What the component logs above its enter and exit traces: "plain text" and "severity-4 text".
class Statements
{
public:
    Statements();
    Statements(const Statements&) = delete;
    Statements& operator=(const Statements&) = delete;
    ~Statements();

    Texts take(); ///< those since the last call

private:
    class Sink;
    std::shared_ptr<Sink> _sink;
};

/// The objects of others. What is done to answer is the test's, so that no failure meets it.
class ShieldedRepository : public zoltest::FakeRepository
{
public:
    std::string getFirstMoInstance(unsigned long txHandle, const std::string& classPath) override;
    std::list<std::string> getChildren(unsigned long txHandle, const std::string& parentDn,
                                       const std::string& className) override;
    void getAttribute(unsigned long txHandle, const std::string& dn, const std::string& attributeName,
                      ZolMoAttributeValueResult_3& result) override;
};

/// The component, loaded and started on a tree, with a host, a repository and an external command that are
/// shielded from what the shim does. One per process.
class Surroundings
{
public:
    Surroundings();
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;
    ~Surroundings();

    zoltest::TemporaryTree tree;
    Statements statements;
    zoltest::FakeHost host;
    ShieldedRepository repository;
    zoltest::FakeZolea zolea; ///< tells the root

    std::string root(const std::string& name = "") const { return tree.path(name); }
    /// Whatever was in the root goes.
    void clear() const;
    /// The same few files and directories each time, so that every scenario finds what it needs.
    void build() const;
    /// What is below the root: "d 0755 name", "f 5 name" or "l name", sorted.
    Texts snapshot() const;

    ZolReturnT init(const std::string& config) const;
    ZolReturnT start() const;
    const ZolOamSpiTransactionalResource_1& resource() const;
    const ZolOamSpiManagedObject_3& objects() const;
    std::unique_ptr<zoltest::Transaction> transaction(unsigned long txHandle) const; ///< not joined

private:
    zoltest::LoadedLibrary _library;
};

} // namespace faults
