#pragma once

#include "model/Model.h"
#include "model/Operation.h"
#include "model/Sandbox.h"
#include "model/Vocabulary.h"

namespace zolmodel
{

/// Draws operations that fit what the model holds at the moment, and some that don't.
class Generator
{
public:
    Generator(std::uint64_t seed, std::uint64_t round, const Model& model, const Sandbox& sandbox);

    Operation next();

private:
    struct Entry
    {
        std::vector<std::string> names; ///< the way to it from the internal root
        bool isFile = false;
    };

    Operation hostOperation(Does does);
    Operation diskOperation();
    Operation putLink(const std::string& path);
    Operation query(Operation operation);
    Operation action(Operation operation);

    std::string name();
    std::string dn();
    std::string groupDn();
    Entry entry();
    std::string valueOf(const std::string& onDisk, bool asFile);
    std::string directoryPath();
    std::string entryPath();
    std::string descend(const std::string& top, unsigned percentDeeper);
    std::vector<std::string> attributeNames(const std::string& dn);

    Chance _chance;
    const Model& _model;
    const Sandbox& _sandbox;
    std::vector<std::string> _names;
    unsigned _drawn = 0;
    unsigned _iterators = 0;
};

} // namespace zolmodel
