#pragma once

#include <Poco/Mutex.h>
#include <string>
#include <vector>

namespace ZolFileManagementCommon
{

/// Runs the installation's external command `zolea`, one run at a time for each object. Any thread may call.
class FileManagementZoleaWrapper
{
public:
    FileManagementZoleaWrapper();
    FileManagementZoleaWrapper(const FileManagementZoleaWrapper&) = delete;
    FileManagementZoleaWrapper& operator=(const FileManagementZoleaWrapper&) = delete;
    virtual ~FileManagementZoleaWrapper();

    /// Runs the command through the shell, with the arguments as they stand, and returns what it printed
    /// without white space at the ends; its exit status doesn't matter. Blocks until it has closed its
    /// output. Throws Zol::ZolException if it can't be run.
    std::string invokeZolea(const std::string& arguments) const;

    /// Asks for the internal root. Always true; failure is the exception of invokeZolea.
    bool readConfiguration(std::string& internalRoot);

    /// Joins arguments with blanks, without quoting.
    std::string serialize(const std::vector<std::string>& arguments) const;

private:
    mutable Poco::Mutex _mutex;
};

} // namespace ZolFileManagementCommon
