#include "Worker.h"

#include "support/ChildProcess.h"
#include "support/FakeRepository.h"
#include "support/RecordedLog.h"

#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace
{

using zoltest::FakeRepository;
using zoltest::RecordedLog;
using zoltest::Worker;

const std::string noInstance =
    "severity-4 Could not find first instance of ManagedElement,SystemFunctions,FileM\n";
const std::string fallback = "ManagedElement=1,SystemFunctions=1,FileM=1\n";

// The answer is kept for the life of the process, so each test needs a process of its own. Gives what the
// function wrote.
std::string inFreshProcess(const std::function<std::string()>& function)
{
    const auto outcome = zoltest::runInChild([&] {
        std::fputs(function().c_str(), stderr);
        return 0;
    });
    EXPECT_EQ(outcome.exitStatus, 0);
    return outcome.standardError;
}

std::string lines(const std::vector<std::string>& texts)
{
    std::string all;
    for (const auto& text : texts)
    {
        all += text + "\n";
    }
    return all;
}

// A line with the answer, behind a line for each log statement.
std::string rootAndLog(Worker& worker)
{
    const RecordedLog log;
    const std::string root = worker.transaction.getFileMRoot();
    return lines(log.statements()) + root + "\n";
}

std::string rootAfter(const zoltest::Failure& failure)
{
    return inFreshProcess([&] {
        Worker worker("/fs");
        FakeRepository repository;
        repository.firstInstanceFailure = failure;
        return rootAndLog(worker);
    });
}

} // namespace

TEST(FileMRoot, HostIsAskedInTheTransaction)
{
    EXPECT_EQ(inFreshProcess([] {
                  Worker worker("/fs", 123);
                  FakeRepository repository;
                  repository.firstInstance = "ManagedElement=2,SystemFunctions=3,FileM=4";
                  const std::string answer = rootAndLog(worker);
                  return answer + lines(repository.calls());
              }),
              "ManagedElement=2,SystemFunctions=3,FileM=4\n"
              "getFirstMoInstance tx=123 ManagedElement,SystemFunctions,FileM\n");
}

TEST(FileMRoot, HostIsNotAskedAgainAfterAnAnswer)
{
    EXPECT_EQ(inFreshProcess([] {
                  Worker worker("/fs");
                  FakeRepository repository;
                  repository.firstInstance = "FileM=first";
                  std::string answers = rootAndLog(worker);
                  repository.firstInstance = "FileM=second";
                  answers += rootAndLog(worker);
                  return answers + std::to_string(repository.calls().size());
              }),
              "FileM=first\nFileM=first\n1");
}

TEST(FileMRoot, AnswerIsSharedByAllTransactions)
{
    EXPECT_EQ(inFreshProcess([] {
                  FakeRepository repository;
                  repository.firstInstance = "FileM=first";
                  std::string answers;
                  for (unsigned long txHandle = 1; txHandle < 4; ++txHandle)
                  {
                      Worker worker("/fs", txHandle);
                      answers += rootAndLog(worker);
                      repository.firstInstance = "FileM=later";
                  }
                  return answers + lines(repository.calls());
              }),
              "FileM=first\nFileM=first\nFileM=first\n"
              "getFirstMoInstance tx=1 ManagedElement,SystemFunctions,FileM\n");
}

TEST(FileMRoot, HostIsAskedAgainAfterAnEmptyAnswer)
{
    EXPECT_EQ(inFreshProcess([] {
                  Worker worker("/fs");
                  FakeRepository repository;
                  repository.firstInstance = "";
                  std::string answers = rootAndLog(worker) + rootAndLog(worker);
                  repository.firstInstance = "FileM=third";
                  answers += rootAndLog(worker) + rootAndLog(worker);
                  return answers + std::to_string(repository.calls().size());
              }),
              "\n\nFileM=third\nFileM=third\n3");
}

TEST(FileMRoot, WithoutAnInstanceIsTheUsualDn)
{
    EXPECT_EQ(rootAfter(zoltest::throwsZolException(ZolReturnNoSuch)), noInstance + fallback);
}

TEST(FileMRoot, WithoutARepositoryIsTheUsualDn)
{
    EXPECT_EQ(inFreshProcess([] {
                  Worker worker("/fs");
                  return rootAndLog(worker);
              }),
              noInstance + fallback);
}

TEST(FileMRoot, FailureOfAnyTypeGivesTheUsualDn)
{
    EXPECT_EQ(rootAfter(zoltest::throwsRuntimeError("x")), noInstance + fallback);
    EXPECT_EQ(rootAfter(zoltest::throwsForeign()), noInstance + fallback);
    EXPECT_EQ(rootAfter([] { throw 5; }), noInstance + fallback);
}

TEST(FileMRoot, HostIsNotAskedAgainAfterAFailure)
{
    EXPECT_EQ(inFreshProcess([] {
                  Worker worker("/fs");
                  FakeRepository repository;
                  repository.firstInstanceFailure = zoltest::throwsForeign();
                  std::string answers = rootAndLog(worker);
                  repository.firstInstanceFailure = nullptr;
                  repository.firstInstance = "FileM=second";
                  answers += rootAndLog(worker);
                  return answers + std::to_string(repository.calls().size());
              }),
              noInstance + fallback + fallback + "1");
}
