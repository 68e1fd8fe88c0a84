#pragma once

#include "model/Operation.h"
#include "model/Outcome.h"
#include "support/FakeHost.h"

#include <string>
#include <zol/spi/ZolOamSpiManagedObject_3.h>
#include <zol/spi/ZolOamSpiTransactionalResource_1.h>

namespace zolmodel
{

/// The component that is compared: its library, loaded and started for an internal root.
class Subject
{
public:
    /// Loads the library; with nothing given, the one of this build. Throws if it can't be had.
    explicit Subject(const std::string& library);
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;
    ~Subject();

    void start(const std::string& internalRoot);

    /// Does it and tells all that the host gets to see.
    Outcome observe(const Operation& operation, unsigned long handle, unsigned long long iteratorId);

private:
    Outcome done(const Operation& operation, unsigned long handle, unsigned long long iteratorId);

    zoltest::FakeHost _host;
    void* _library;
    const ZolOamSpiTransactionalResource_1* _resource = nullptr;
    const ZolOamSpiManagedObject_3* _objects = nullptr;
};

} // namespace zolmodel
