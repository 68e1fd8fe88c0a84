#pragma once

#include <memory>
#include <vector>

namespace Zol
{

/// The arena of one transaction: what it holds lives until `free` or its own end. Not for several threads at
/// a time.
class AutoMemory
{
public:
    class OwnedObjBase
    {
    public:
        OwnedObjBase() = default;
        OwnedObjBase(const OwnedObjBase&) = delete;
        OwnedObjBase& operator=(const OwnedObjBase&) = delete;
        virtual ~OwnedObjBase() = default;
    };

    template<class T>
    class OwnedObj : public OwnedObjBase, public T
    {};

    template<class T>
    class ObjHolder : public OwnedObjBase
    {
    public:
        explicit ObjHolder(T* object)
            : _object(object)
        {}
        ~ObjHolder() override { delete _object; }

    private:
        T* _object;
    };

    AutoMemory() = default;
    AutoMemory(const AutoMemory&) = delete;
    AutoMemory& operator=(const AutoMemory&) = delete;
    virtual ~AutoMemory();

    /// A copy of the text that the arena owns.
    char* strdup(const char* text);

    /// A new object that the arena owns.
    template<class T>
    T* newObj()
    {
        auto owned = std::make_unique<OwnedObj<T>>();
        _objects.push_back(owned.get());
        return owned.release();
    }

    /// Gives an object from `new` to the arena, in any case, and returns it.
    template<class T>
    T* addObj(T* object)
    {
        std::unique_ptr<T> unowned(object);
        auto holder = std::make_unique<ObjHolder<T>>(object);
        static_cast<void>(unowned.release());
        _objects.push_back(holder.get());
        static_cast<void>(holder.release());
        return object;
    }

    /// Frees the texts, then the objects in the reverse order of their registration. The arena is empty then
    /// and can be used again.
    void free();

private:
    // a list would take as much memory again for each of many short names
    std::vector<void*> _strings;
    std::vector<OwnedObjBase*> _objects;
};

} // namespace Zol
