#include "ChangesFixture.h"
#include "SystemFaults.h"
#include "support/ChildProcess.h"

#include <csignal>
#include <cstdio>
#include <functional>
#include <new>

using testing::StartsWith;
using zoltest::fileGroup;
using zoltest::fileM;

namespace
{

// What can't be anything that the component knows.
struct Foreign
{};

template<class Exception>
[[noreturn]] void raise()
{
    std::fputs("raised\n", stderr);
    throw Exception();
}

template<class Exception>
ZolReturnT raiseAtAMessage(uint32_t /*category*/, const char* /*text*/)
{
    raise<Exception>();
}

class ForeignException : public zoltest::Changes
{
protected:
    /// The operation, in which something is raised, ends its process.
    static void expectEndOfProcess(const std::function<void()>& operation)
    {
        const auto outcome = zoltest::runInChild([&] {
            // if it came out of the operation, it would end the process as well
            try
            {
                operation();
            }
            catch (...)
            {
                return 2;
            }
            return 1;
        });
        EXPECT_EQ(outcome.exitStatus, -1);
        EXPECT_EQ(outcome.signal, SIGABRT);
        EXPECT_THAT(outcome.standardError, StartsWith("raised\nterminate called"));
    }

    /// The host throws when it is handed an operator message: something foreign, then a standard exception,
    /// for which the operation has no handler either.
    void expectEndOfProcessAtAMessage(const std::function<void()>& operation)
    {
        expectEndOfProcess([&] {
            host.threadContext()->addMessage = raiseAtAMessage<Foreign>;
            operation();
        });
        expectEndOfProcess([&] {
            host.threadContext()->addMessage = raiseAtAMessage<std::bad_alloc>;
            operation();
        });
    }
};

} // namespace

TEST_F(ForeignException, InCreateEndsTheProcess)
{
    expectEndOfProcessAtAMessage([this] { create(".."); });
}

TEST_F(ForeignException, InDeleteEndsTheProcess)
{
    tree.file("a/.filemnodirectorydelete");
    expectEndOfProcessAtAMessage([this] { deleteM(fileGroup("a")); });
}

TEST_F(ForeignException, InAnActionEndsTheProcess)
{
    expectEndOfProcessAtAMessage([this] { removeFile(fileM, "("); });
}

TEST_F(ForeignException, InACreationOfTheCommitEndsTheProcess)
{
    ASSERT_EQ(create("a"), 0);
    expectEndOfProcess([this] {
        zoltest::SystemFaults system;
        system.createDirectory = [](const std::string&) { raise<Foreign>(); };
        worker.commit();
    });
}
