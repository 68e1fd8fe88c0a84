#include "Expect.h"
#include "FileMTransaction.h"
#include "Input.h"
#include "Rules.h"
#include "ScratchDirectory.h"
#include "support/FakeHost.h"

#include <dirent.h>
#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using namespace zolfuzz;
using ZolFileManagement::FileMTransaction;

namespace
{

constexpr const char* ROOT_DN = "ManagedElement=1,SystemFunctions=1,FileM=1";

/// A small tree on disk, and the DNs of what is in it.
class Tree
{
public:
    explicit Tree(std::string root)
        : _root(std::move(root))
    {
        mkdir(_root.c_str(), 0700);
        list(_root);
    }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree()
    {
        for (auto path = _made.rbegin(); path != _made.rend(); ++path)
        {
            remove(path->c_str());
        }
    }

    /// "name", "directory/name" and so on; the last one is a directory if a slash closes it.
    void make(const std::string& line)
    {
        std::string dn = ROOT_DN;
        std::string path = _root;
        std::size_t begin = 0;
        for (auto slash = line.find('/'); slash != std::string::npos; slash = line.find('/', begin))
        {
            const std::string name = line.substr(begin, slash - begin);
            begin = slash + 1;
            if (!isName(name))
            {
                return;
            }
            path += "/" + name;
            dn += ",FileGroup=" + rules::fileGroupValue(name);
            if (mkdir(path.c_str(), 0700) == 0)
            {
                _made.push_back(path);
            }
            dns.push_back(dn);
        }
        const std::string name = line.substr(begin);
        if (isName(name))
        {
            path += "/" + name;
            const int file = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600);
            if (file >= 0)
            {
                close(file);
                _made.push_back(path);
            }
            dns.push_back(dn + ",FileInformation=" + rules::fileInformationValue(name));
        }
    }

    void list() { list(_root); }

    bool has(const std::string& path) const
    {
        const bool isWithin =
            path.starts_with(_root + "/") && !path.ends_with("/..") && !path.ends_with("/.");
        struct stat status = {};
        return isWithin ? _paths.count(path) != 0 : stat(path.c_str(), &status) == 0;
    }

    std::vector<std::string> dns;

private:
    static bool isName(const std::string& name)
    {
        return !name.empty() && name != "." && name != ".." && name.find('\0') == std::string::npos;
    }

    void list(const std::string& directory)
    {
        DIR* const stream = opendir(directory.c_str());
        if (stream == nullptr)
        {
            return;
        }
        while (const dirent* const entry = readdir(stream))
        {
            const std::string name = entry->d_name;
            if (name != "." && name != "..")
            {
                _paths.insert(directory + "/" + name);
                if (entry->d_type == DT_DIR)
                {
                    list(directory + "/" + name);
                }
            }
        }
        closedir(stream);
    }

    std::string _root;
    std::vector<std::string> _made;
    std::set<std::string> _paths;
};

void search(FileMTransaction& transaction, const Tree& tree, const std::string& root, const std::string& dn)
{
    std::string expected = dn;
    bool isExpected = false;
    for (const auto& candidate : rules::candidatesOfDn(dn))
    {
        if (tree.has(rules::locationOfDn(candidate, root).onDisk()))
        {
            expected = candidate;
            isExpected = true;
            break;
        }
    }
    std::string found = dn;
    expectSame(transaction.replace3gppIllegalChars(found), isExpected, "whether there is one", dn);
    expectSame(found, expected, "the name on disk", dn);
}

} // namespace

// Lines: first what is on disk, then, behind an empty one, DNs below the root. What is on disk is searched by
// the values that it is shown with, too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static zoltest::FakeHost host;
    static FileMTransaction transaction(1, *host.portal1());
    static const std::string root = scratchDirectory() + "/root";
    FileMTransaction::initialize(root);

    Input input(data, size);
    Tree tree(root);
    for (int lines = 0; lines < 6; ++lines)
    {
        const std::string line = input.line();
        if (line.empty())
        {
            break;
        }
        tree.make(line);
    }
    tree.list();
    for (int lines = 0; !input.isEmpty() && lines < 4; ++lines)
    {
        tree.dns.push_back(std::string(ROOT_DN) + "," + input.line().c_str());
    }
    for (const auto& dn : tree.dns)
    {
        search(transaction, tree, root, dn);
    }
    return 0;
}
