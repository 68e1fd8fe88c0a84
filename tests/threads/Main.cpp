#include "support/FakeRepository.h"
#include "support/FakeZolea.h"
#include "support/LoadedComponent.h"
#include "support/TemporaryTree.h"
#include "threads/DiskChanger.h"
#include "threads/HostThread.h"
#include "threads/Watchdog.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <dlfcn.h>
#include <iostream>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>
#include <zol/common/LoggingWrapper.h>

using namespace threadtest;

namespace
{

struct Options
{
    std::vector<unsigned long> threads = {2, 8, 32}; // in turn, each for the same share of the time
    unsigned long seconds = 20;
    unsigned long seed = 1;
};

Options optionsFrom(int count, char** arguments)
{
    Options options;
    for (int i = 1; i + 1 < count; i += 2)
    {
        const std::string name = arguments[i];
        const unsigned long value = std::stoul(arguments[i + 1]);
        if (name == "--threads")
        {
            options.threads = {value};
        }
        else if (name == "--seconds")
        {
            options.seconds = value;
        }
        else if (name == "--seed")
        {
            options.seed = value;
        }
        else
        {
            throw std::invalid_argument(name);
        }
    }
    return options;
}

/// The library stays to the end, so that reports can name what is in it.
class KeptLibrary
{
public:
    KeptLibrary()
        : _handle(dlopen(zoltest::LoadedLibrary::path(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE))
    {
        if (_handle == nullptr)
        {
            throw std::runtime_error(dlerror());
        }
    }
    KeptLibrary(const KeptLibrary&) = delete;
    KeptLibrary& operator=(const KeptLibrary&) = delete;
    ~KeptLibrary() { dlclose(_handle); }

private:
    void* _handle;
};

/// Takes every line and keeps none: the making of the lines is what is wanted.
class NoSink : public Zol::LogSink
{
public:
    void write(const Zol::LogRecord&) override {}
};

Tally run(unsigned long count, std::chrono::milliseconds time, unsigned long seed)
{
    const zoltest::TemporaryTree tree;
    const std::string root = tree.directory("root");
    tree.file("outside/a/f");
    zoltest::FakeRepository repository;
    repository.setChildren("ManagedElement=1,SystemFunctions=1,FileM=1", "FileGroupPolicy", {"Policy=1"});
    repository.setReferences("Policy=1", "fileGroup",
                             {"ManagedElement=1,SystemFunctions=1,FileM=1,FileGroup=a"});
    const DiskChanger changer(root, tree.path("outside"), seed);

    zoltest::LoadedComponent component(root);
    component.host.whileRegistering = [&](unsigned long) {
        // it is the only one in the component, so that this orders no threads that the lock doesn't
        component.host.clear();
        repository.clear();
        HostThread::callBack();
    };
    std::list<HostThread> hostThreads;
    for (unsigned long number = 0; number < count; ++number)
    {
        hostThreads.emplace_back(component.resource(), component.objects(), number, seed * 1000);
    }
    std::atomic<bool> isOver = false;
    {
        const Watchdog watchdog(hostThreads);
        std::list<std::thread> threads;
        for (HostThread& hostThread : hostThreads)
        {
            threads.emplace_back([&] { hostThread.run(isOver); });
        }
        std::this_thread::sleep_for(time);
        isOver.store(true, std::memory_order_relaxed);
        for (std::thread& thread : threads)
        {
            thread.join();
        }
    }
    HostThread::finishShared(component.resource());
    Tally tally;
    for (const HostThread& hostThread : hostThreads)
    {
        tally.add(hostThread.tally());
    }
    return tally;
}

} // namespace

int main(int count, char** arguments)
try
{
    const Options options = optionsFrom(count, arguments);
    const KeptLibrary library;
    const zoltest::FakeZolea zolea("echo /somewhere");
    Zol::LoggingWrapper::instance().set_sink(std::make_shared<NoSink>());
    const std::chrono::milliseconds share(options.seconds * 1000 / options.threads.size());
    Tally all;
    for (std::size_t turn = 0; turn < options.threads.size(); ++turn)
    {
        // with traces and without
        Zol::LoggingWrapper::instance().set_level(turn % 2 == 0 ? 8 : 4);
        const Tally tally = run(options.threads[turn], share, options.seed + turn);
        std::cout << options.threads[turn] << " threads: " << tally.calls() << " calls\n";
        all.add(tally);
    }
    all.print(std::cout);
    for (const std::string& violation : all.violations())
    {
        std::cout << "VIOLATION: " << violation << '\n';
    }
    for (const std::string& missing : all.missing())
    {
        std::cout << "never called: " << missing << '\n';
    }
    return all.violations().empty() && all.missing().empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}
catch (const std::exception& failure)
{
    std::cerr << "usage: " << arguments[0] << " [--seconds N] [--threads N] [--seed N]\n"
              << failure.what() << '\n';
    return 2;
}
