#pragma once

#include "AutoMemory.h"
#include "FileConfigIterator.h"
#include "FileGroupIterator.h"
#include "FileInfo.h"
#include "NonComittedData.h"
#include "PathCompare.h"

#include <Poco/Path.h>
#include <map>
#include <string>
#include <vector>
#include <zol/spi/ZolMgmtSpiInterfacePortal_1.h>
#include <zol/spi/ZolMgmtSpiThreadContext.h>
#include <zol/spi/ZolMoAttributeValue_3.h>

namespace ZolFileManagement
{

class FileStatus;

/// The worker of one transaction on the file tree, from its join to its finish. Changes wait in
/// NonComittedData; only `commit` writes to the disk, and reads see the disk as changed by what waits.
///
/// It takes no lock: FileMMoImpl lets one call at a time through to all workers of the process. A noexcept
/// operation catches what its own rules name; anything else that comes up in it ends the process.
class FileMTransaction
{
public:
    using PathCompare = ZolFileManagement::PathCompare;
    using NonComittedData = ZolFileManagement::NonComittedData;
    using FileInfo = ZolFileManagement::FileInfo;
    using FileGroupIterator = ZolFileManagement::FileGroupIterator;
    using FileConfigIterator = ZolFileManagement::FileConfigIterator;

    // FileMTransaction.cpp: life
    static void initialize(const std::string& fileSystemRoot);
    FileMTransaction(unsigned long txHandle, ZolMgmtSpiInterfacePortal_1& portal);
    FileMTransaction(const FileMTransaction&) = delete;
    FileMTransaction& operator=(const FileMTransaction&) = delete;
    virtual ~FileMTransaction();
    /// Frees what the arena holds, so the iterator maps dangle: the last call before the destructor. Always
    /// 0.
    ZolReturnT finish() noexcept;

    // Commit.cpp: from intent to disk
    /// 0, or -1 after a failure that stopped it. Nothing is undone, and nothing waits afterwards.
    ZolReturnT commit() noexcept;
    ZolReturnT abort() noexcept;
    void modifyFileOwnerAndGroup(const char* path, unsigned int owner, unsigned int group);

    // CreateAndDelete.cpp
    ZolReturnT create(const char* parentDn, const char* className, const char* keyAttribute,
                      const char* keyValue) noexcept;
    ZolReturnT deleteM(const char* dn) noexcept;

    // Actions.cpp
    /// `result` is complete on every return and its value counts with 0 only.
    ZolReturnT action(const char* dn, const char* actionName,
                      QenMoNamedAttributeValueContainer_3** parameters,
                      QenMoAttributeValueResult_3& result) noexcept;
    ZolReturnT removeFileAction(const Poco::Path& directory, const std::string& expression, bool& removed);

    // OperatorMessages.cpp
    void addThreadContextMessage(const std::string& message);

    // ChildQueries.cpp: the shape of the tree
    ZolReturnT newIterator(const char* parentDn, const char* className,
                           unsigned long long* iteratorId) noexcept;
    /// `*name` is the arena's, or null at the end.
    ZolReturnT next(unsigned long long iteratorId, char** name) noexcept;
    ZolReturnT countMoChildren(const char* dn, const char* className, unsigned long long* count);
    bool isDirContainingFiles(const Poco::Path& directory);
    bool existsMo(const char* dn);

    // AttributeReads.cpp: each read is computed anew; the result is the host's and never lives in the arena
    ZolReturnT getAttribute(const char* dn, const char* attributeName,
                            QenMoAttributeValueResult_3& result) noexcept;
    ZolReturnT getAttributes(const char* dn, const char** attributeNames,
                             QenMoAttributeValuesResult_3& result) noexcept;
    // these throw std::exception and what derives from it, ZolException with -2 for an unknown attribute
    void getFileGroupAttribute(const char* dn, const char* attributeName, const Poco::Path& path,
                               QenMoAttributeValueResult_3& result);
    void getFileInformationAttribute(const char* dn, const char* attributeName, const Poco::Path& path,
                                     const FileStatus& status, QenMoAttributeValueResult_3& result);
    void getFileConfigurationAttribute(const char* dn, const char* attributeName,
                                       QenMoAttributeValueResult_3& result);

    // Reservers.cpp: the FileGroupPolicy objects of others
    void getFileGroupReservers(const char* dn, std::vector<std::string>& reservers);

    // FileListing.cpp: the attribute `files`
    void getFileGroupFiles(const char* dn, std::vector<FileInfo>& files);
    void setAttrFilesResult(const char* dn, std::vector<FileInfo> files, QenMoAttributeValueResult_3& result);
    static std::string getDate(const Poco::Path& path);

    // ResultRecords.cpp
    void initAttrResult(QenOamSpiMoAttributeType_3 type, unsigned int count,
                        QenMoAttributeValueResult_3& result);
    void setAttrStringResult(const std::string& value, QenMoAttributeValueResult_3& result);
    static void releaseAttrResultCB(QenMoAttributeValueContainer_3* container);
    static void releaseAttributesResultCB(QenMoAttributeValueContainer_3** containers);

    // DnConversion.cpp: from a DN to a place on disk
    bool checkDn(const char* dn);
    Poco::Path convertDnToPath(const char* dn);
    /// The text of that path: a long path costs much more than its text.
    std::string convertDnToText(const std::string& dn);
    const std::string& getFileMRoot();

    // NameEncoding.cpp: from a name on disk to the value of an RDN and, as far as that goes, back
    static void reAlignWith3gppRdn(std::string& value);
    static void alignNameWithQuestionMark(std::string& name);
    static void alignFileGroupWith3gppRdn(std::string& name);
    bool illegalNaming(const char* name, std::string& error);

    // NameSearch.cpp: the rest of the way back, by trying on disk
    bool replace3gppIllegalChars(std::string& dn);

private:
    bool isDirContainingFiles(const std::string& directory); // for the text of a path in directory form

    void withdrawCreatedDirsBelow(const Poco::Path& directory); // CreateAndDelete.cpp

    // The iterators' objects belong to the arena.
    std::map<unsigned long long, FileGroupIterator*> _fileGroupIterators;
    Zol::AutoMemory _autoMemory;
    NonComittedData _nonComittedData;
    unsigned long _txHandle;
    ZolMgmtSpiInterfacePortal_1& _portal;
    std::map<unsigned long long, FileConfigIterator*> _fileConfigIterators;
    ZolMgmtSpiThreadContext* _threadContext = nullptr; // null if the host has none; not owned

    // written at start only
    static std::string _fileSystemRoot;
    static std::string _rootDirectory; // the same as the text of a path
};

} // namespace ZolFileManagement
