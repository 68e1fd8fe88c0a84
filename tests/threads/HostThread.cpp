#include "threads/HostThread.h"

#include "support/AttributeText.h"
#include "support/DistinguishedNames.h"
#include "threads/Names.h"

#include <array>

namespace threadtest
{

namespace
{

constexpr unsigned long sharedHandles = 4;
constexpr unsigned long neverJoined = 999;
constexpr unsigned long handlesOfAThread = 1000000000;

thread_local HostThread* currentThread = nullptr;

template<class Result, class Value>
void release(const Result& result, Value value)
{
    if (result.releaseCallback != nullptr)
    {
        result.releaseCallback(value);
    }
}

} // namespace

HostThread::HostThread(const ZolOamSpiTransactionalResource_1& resource,
                       const ZolOamSpiManagedObject_3& objects, unsigned long number, unsigned long seed)
    : _resource(resource)
    , _objects(objects)
    , _random(seed + number)
    , _nextHandle((number + 1) * handlesOfAThread)
{}

void HostThread::run(const std::atomic<bool>& isOver)
{
    currentThread = this;
    while (!isOver.load(std::memory_order_relaxed))
    {
        if (chance(3))
        {
            workInATransaction();
        }
        else
        {
            workOnAShared();
        }
    }
}

void HostThread::callBack()
{
    HostThread& thread = *currentThread;
    if (thread._isInCallBack)
    {
        return;
    }
    thread._isInCallBack = true;
    const char* const outer = thread.current();
    if (thread.chance(2))
    {
        thread.workInATransaction();
    }
    else
    {
        thread.workOnAShared();
    }
    thread._current.store(outer, std::memory_order_relaxed);
    thread._isInCallBack = false;
}

void HostThread::finishShared(const ZolOamSpiTransactionalResource_1& resource)
{
    for (unsigned long handle = 1; handle <= sharedHandles; ++handle)
    {
        resource.finish(handle);
    }
}

template<class Call>
ZolReturnT HostThread::note(const char* operation, State state, const Call& call)
{
    _current.store(operation, std::memory_order_relaxed);
    const ZolReturnT code = call();
    _current.store("nothing", std::memory_order_relaxed);
    _calls.fetch_add(1, std::memory_order_relaxed);
    _tally.note(operation, state, code);
    return code;
}

void HostThread::workInATransaction()
{
    const unsigned long number = _nextHandle++;
    if (note("join", State::Unknown, [&] { return _resource.join(number); }) != 0)
    {
        return;
    }
    const Handle handle = {number, State::Known};
    unsigned long long iterator = 0;
    note("newMoIterator", State::Known,
         [&] { return _objects.newMoIterator(number, zoltest::fileM.c_str(), "FileGroup", &iterator); });
    for (unsigned long count = _random() % 12; count > 0; --count)
    {
        operate(handle);
    }
    end(number, iterator);
    if (chance(8))
    {
        operate({chance(2) ? number : neverJoined, State::Unknown});
    }
}

void HostThread::end(unsigned long number, unsigned long long iterator)
{
    char* name = nullptr;
    const char* afterwards = "nextMo after finish alone";
    note("prepare", State::Known, [&] { return _resource.prepare(number); });
    if (!chance(5))
    {
        afterwards = "nextMo after commit or abort";
        if (chance(3))
        {
            note("abort", State::Known, [&] { return _resource.abort(number); });
        }
        else
        {
            note("commit", State::Known, [&] { return _resource.commit(number); });
        }
        note(afterwards, State::Known, [&] { return _objects.nextMo(iterator, &name); });
    }
    if (chance(10))
    {
        operate({number, State::Known});
    }
    note("finish", State::Known, [&] { return _resource.finish(number); });
    note(afterwards, State::Unknown, [&] { return _objects.nextMo(iterator, &name); });
    if (chance(10))
    {
        note("prepare", State::Unknown, [&] { return _resource.prepare(number); });
        note("commit", State::Unknown, [&] { return _resource.commit(number); });
        note("abort", State::Unknown, [&] { return _resource.abort(number); });
        note("finish", State::Unknown, [&] { return _resource.finish(number); });
    }
}

void HostThread::workOnAShared()
{
    const Handle handle = {1 + _random() % sharedHandles, State::Shared};
    switch (_random() % 16)
    {
    case 0:
    case 1:
        note("join", State::Shared, [&] { return _resource.join(handle.number); });
        break;
    case 2:
        note("commit", State::Shared, [&] { return _resource.commit(handle.number); });
        break;
    case 3:
        note("abort", State::Shared, [&] { return _resource.abort(handle.number); });
        break;
    case 4:
        note("finish", State::Shared, [&] { return _resource.finish(handle.number); });
        break;
    case 5:
        note("prepare", State::Shared, [&] { return _resource.prepare(handle.number); });
        break;
    default:
        operate(handle);
    }
}

void HostThread::operate(Handle handle)
{
    const std::string dn = chance(2) ? anyDirectoryDn() : anyFileDn();
    switch (_random() % 10)
    {
    case 0:
        iterate(handle);
        break;
    case 1:
        readAttribute(handle);
        break;
    case 2:
        readAttributes(handle);
        break;
    case 3:
    case 4:
        create(handle);
        break;
    case 5:
        note("deleteMo", handle.state, [&] { return _objects.deleteMo(handle.number, dn.c_str()); });
        break;
    case 6:
        act(handle);
        break;
    case 7:
        note("setMoAttribute", handle.state,
             [&] { return _objects.setMoAttribute(handle.number, dn.c_str(), "size", nullptr); });
        break;
    case 8:
        note("existsMo", handle.state, [&] {
            bool exists = false;
            return _objects.existsMo(handle.number, dn.c_str(), &exists);
        });
        break;
    default:
        note("countMoChildren", handle.state, [&] {
            unsigned long long count = 0;
            return _objects.countMoChildren(handle.number, anyDirectoryDn().c_str(),
                                            chance(2) ? "FileGroup" : "FileInformation", &count);
        });
    }
}

void HostThread::iterate(Handle handle)
{
    unsigned long long iterator = 0;
    if (chance(8))
    {
        note("newMoIterator of an unknown class", handle.state, [&] {
            return _objects.newMoIterator(handle.number, zoltest::fileM.c_str(), "Other", &iterator);
        });
        return;
    }
    static const std::array<const char*, 3> classes = {"FileGroup", "FileInformation", "FileMConfigData"};
    const ZolReturnT code = note("newMoIterator", handle.state, [&] {
        return _objects.newMoIterator(handle.number, anyDirectoryDn().c_str(), classes[_random() % 3],
                                      &iterator);
    });
    char* name = nullptr;
    if (code != 0)
    {
        // no iterator has the number 0
        note("nextMo", State::Unknown, [&] { return _objects.nextMo(0, &name); });
    }
    while (code == 0 && note("nextMo", handle.state, [&] { return _objects.nextMo(iterator, &name); }) == 0 &&
           name != nullptr)
    {
        // that of a shared transaction may be gone with it
        if (handle.state == State::Known && *name == '\0')
        {
            _tally.noteViolation("an empty name from nextMo");
        }
    }
    note("finalizeMoIterator", handle.state, [&] { return _objects.finalizeMoIterator(iterator); });
}

void HostThread::readAttribute(Handle handle)
{
    const auto read = [&](const char* operation, const std::string& dn, const char* attribute) {
        ZolMoAttributeValueResult_3 result = {nullptr, nullptr};
        const ZolReturnT code = note(operation, handle.state, [&] {
            return _objects.getMoAttribute(handle.number, dn.c_str(), attribute, &result);
        });
        if (code == 0 && zoltest::toText(result.container).empty())
        {
            _tally.noteViolation(std::string("no value of ") + attribute);
        }
        release(result, result.container);
    };
    static const std::array<const char*, 5> ofFile = {"fileInformationId", "modificationTime", "size", "type",
                                                      "open"};
    static const std::array<const char*, 4> ofDirectory = {"fileGroupId", "internalHousekeeping",
                                                           "reservedByPolicy", "files"};
    switch (_random() % 4)
    {
    case 0:
        return read("getMoAttribute of a file", anyFileDn(), ofFile[_random() % ofFile.size()]);
    case 1:
        return read("getMoAttribute of a directory", anyDirectoryDn(),
                    ofDirectory[_random() % ofDirectory.size()]);
    case 2:
        return read("getMoAttribute that is unknown", zoltest::fileGroup("a"), "color");
    default:
        // the external command takes its time, and all wait for it
        return read("getMoAttribute of the configuration", zoltest::fileMConfigData,
                    chance(50) ? "internalRoot" : "fileMConfigDataId");
    }
}

void HostThread::readAttributes(Handle handle)
{
    const bool isUnknownAmongThem = chance(4);
    std::array<const char*, 5> names = {"fileGroupId", "files", "internalHousekeeping",
                                        isUnknownAmongThem ? "color" : nullptr, nullptr};
    ZolMoAttributeValuesResult_3 result = {nullptr, nullptr};
    note(isUnknownAmongThem ? "getMoAttributes with an unknown one" : "getMoAttributes", handle.state, [&] {
        return _objects.getMoAttributes(handle.number, anyDirectoryDn().c_str(), names.data(), &result);
    });
    release(result, result.containers);
}

void HostThread::act(Handle handle)
{
    std::array<char, 8> good = {".*[fgh]"};
    std::array<char, 8> bad = {"(["};
    const auto run = [&](const char* operation, const char* action, char* expression, bool hasResult) {
        ZolMoAttributeValue_3 value = {};
        value.stringValue = expression;
        ZolMoNamedAttributeValueContainer_3 parameter = {"fileName", attrTypeString, 1, &value};
        std::array<ZolMoNamedAttributeValueContainer_3*, 2> parameters = {
            expression == nullptr ? nullptr : &parameter, nullptr};
        ZolMoAttributeValueResult_3 result = {nullptr, nullptr};
        note(operation, handle.state, [&] {
            return _objects.action(handle.number, anyDirectoryDn().c_str(), action, parameters.data(),
                                   hasResult ? &result : nullptr);
        });
        release(result, result.container);
    };
    switch (_random() % 8)
    {
    case 0:
        return run("action removeFile with a bad expression", "removeFile", bad.data(), true);
    case 1:
        return run("action removeFile without parameters", "removeFile", nullptr, true);
    case 2:
        return run("action that is unknown", "Remove", nullptr, true);
    case 3:
        return run("action without a place for its result", "remove", nullptr, false);
    case 4:
    case 5:
        return run("action remove", "remove", nullptr, true);
    default:
        return run("action removeFile", "removeFile", good.data(), true);
    }
}

void HostThread::create(Handle handle)
{
    const auto call = [&](const char* operation, const char* className, const std::string& name) {
        note(operation, handle.state, [&] {
            return _objects.createMo(handle.number, anyDirectoryDn().c_str(), className, "fileGroupId",
                                     name.c_str(), nullptr);
        });
    };
    switch (_random() % 8)
    {
    case 0:
        return call("createMo of an illegal name", "FileGroup", "a|b");
    case 1:
        return call("createMo of an unknown class", "FileInformation", "a");
    default:
        return call("createMo", "FileGroup", anyOf(_random, directoryNames));
    }
}

std::string HostThread::anyDirectoryDn()
{
    std::string dn = zoltest::fileM;
    for (unsigned long depth = 1 + _random() % 3; depth > 0; --depth)
    {
        dn = zoltest::fileGroup(anyOf(_random, directoryNames), dn);
    }
    return dn;
}

std::string HostThread::anyFileDn()
{
    return zoltest::fileInformation(anyOf(_random, fileNames), anyDirectoryDn());
}

} // namespace threadtest
