#pragma once

#include "filem/Verb.h"

/// Makers of all verbs, each in the source that is named after what it does.
namespace zolhost::filem
{

std::unique_ptr<Verb> makeLs();
std::unique_ptr<Verb> makeTree();
std::unique_ptr<Verb> makeFind();
std::unique_ptr<Verb> makeStat();
std::unique_ptr<Verb> makeGet();
std::unique_ptr<Verb> makeExists();
std::unique_ptr<Verb> makeCount();
std::unique_ptr<Verb> makeWhy();

std::unique_ptr<Verb> makeMkdir();
std::unique_ptr<Verb> makeRmdir();
std::unique_ptr<Verb> makeRm();
std::unique_ptr<Verb> makeRmtree();
std::unique_ptr<Verb> makeDelete();
std::unique_ptr<Verb> makeAction();

std::unique_ptr<Verb> makeDiff();
std::unique_ptr<Verb> makeStatus();
std::unique_ptr<Verb> makeCommit();
std::unique_ptr<Verb> makeAbort();
std::unique_ptr<Verb> makeRestage();
std::unique_ptr<Verb> makeCd();
std::unique_ptr<Verb> makePwd();
std::unique_ptr<Verb> makeUp();
std::unique_ptr<Verb> makeTop();
std::unique_ptr<Verb> makeHelp();
std::unique_ptr<Verb> makeQuit();

} // namespace zolhost::filem
