#pragma once

#include "model/Worker.h"

#include <string>
#include <vector>

namespace zolmodel
{

enum class Does
{
    // what the host does
    Join,
    Prepare,
    Commit,
    Abort,
    Finish,
    SetAttribute,
    GetAttribute,
    GetAttributes,
    NewIterator,
    Next,
    Create,
    Delete,
    Action,
    FinalizeIterator,
    Exists,
    Count,
    // what others do to the disk
    PutFile,
    PutDirectory,
    PutLink,
    PutPipe,
    RemoveEntry,
    ChangeMode,
    LAST = ChangeMode
};

/// One step of a run, complete in itself, so that a run is a list of these and any part of it is one too.
struct Operation
{
    Does does = Does::Prepare;
    unsigned transaction = 0;
    unsigned iterator = 0;          ///< a label that the run gives to what NewIterator opens
    std::string dn;                 ///< of the object, or of its parent
    std::string name;               ///< of a class, attribute or action, or the path of an entry
    std::string text;               ///< key attribute, expression or target of a link
    std::string value;              ///< of the key
    std::vector<std::string> names; ///< of attributes
    int number = 0;                 ///< code of the host, mode, size or shape of the parameters
    bool odd = false; ///< no thread context, no list, no result or surplus attributes, as the operation goes
};

const char* nameOf(Does does);
bool isByHost(const Operation& operation);

/// In one line, for people.
std::string toText(const Operation& operation);

/// For another process.
std::string packed(const Operation& operation);
Operation unpacked(const std::string& bytes);

} // namespace zolmodel
