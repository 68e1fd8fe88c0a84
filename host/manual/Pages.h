#pragma once

#include <iosfwd>

/// What is made of the descriptions of verbs, options, classes and exit codes for readers outside the
/// program.
namespace zolhost::manual
{

void printCommandManual(std::ostream& out);       ///< filem(1)
void printConfigurationManual(std::ostream& out); ///< filem-config(5)

void printBashCompletion(std::ostream& out);
void printZshCompletion(std::ostream& out);
void printFishCompletion(std::ostream& out);

} // namespace zolhost::manual
