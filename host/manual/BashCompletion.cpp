#include "manual/Pages.h"
void zolhost::manual::printBashCompletion(std::ostream&) {}
void zolhost::manual::printZshCompletion(std::ostream&) {}
void zolhost::manual::printFishCompletion(std::ostream&) {}
