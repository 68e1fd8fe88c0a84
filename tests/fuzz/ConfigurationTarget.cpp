#include "Expect.h"
#include "FileManagementConfigHandler.h"
#include "Input.h"
#include "MemoryWatch.h"
#include "OpenWatch.h"
#include "ScratchDirectory.h"

#include <fstream>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using namespace zolfuzz;
using ZolFileManagementCommon::FileManagementConfigHandler;

namespace
{

constexpr std::string_view COMPONENT = "ZolFileManagementComponent";
constexpr std::size_t MAX_MEMORY = 64U << 20U;

/// What a document says: the internal root, or nothing if it can't be read.
using Answer = std::optional<std::string>;

/// Files beside the document that nothing may open; opening the last one would never end.
class Surroundings
{
public:
    Surroundings()
    {
        const std::string& folder = scratchDirectory();
        std::ofstream(folder + "/secret") << "<!ENTITY inner 'secret'>";
        mkfifo((folder + "/pipe").c_str(), 0600);
        if (chdir(folder.c_str()) != 0)
        {
            std::abort();
        }
        _watch = std::make_unique<OpenWatch>(std::vector<std::string>{folder + "/secret", folder + "/pipe"});
    }

    bool sawOpening() const { return _watch->sawOpening(); }
    std::string document() const { return scratchDirectory() + "/document.xml"; }

private:
    std::unique_ptr<OpenWatch> _watch;
};

Answer answerOf(const std::string& config)
{
    FileManagementConfigHandler handler{std::string(COMPONENT)};
    const int code = handler.load(config);
    std::string root = "not assigned";
    handler.getInternalRoot(root);
    handler.unload();
    expect(code == 0 || (code == -1 && root.empty()), "is neither an answer nor a failure", config);
    return code == 0 ? Answer(root) : std::nullopt;
}

Answer watchedAnswerOf(const std::string& config, const Surroundings& surroundings)
{
    const MemoryWatch memory;
    Answer answer = answerOf(config);
    expect(memory.peak() <= MAX_MEMORY, "took " + std::to_string(memory.peak()) + " bytes", config);
    expect(!surroundings.sawOpening(), "opened another file", config);
    return answer;
}

/// Makes a document of which it knows what it says.
class Generator
{
public:
    explicit Generator(Input& input)
        : _input(input)
    {}

    std::string text()
    {
        _body = "<Configuration>";
        children(0, false, false, nullptr);
        _body += "</Configuration>";
        return _declarations.empty() ? _body : "<!DOCTYPE Configuration [" + _declarations + "]>" + _body;
    }

    Answer answer() const
    {
        if (!_isReadable || _components.size() != 1)
        {
            return std::nullopt;
        }
        const auto& roots = _components.front();
        if (roots.size() != 1)
        {
            return "";
        }
        return roots.front()->refersToEntity ? std::nullopt : Answer(roots.front()->text);
    }

    bool isAscii() const { return _isAscii; }

private:
    struct Element
    {
        std::string text;
        bool refersToEntity = false;
        Element* outer = nullptr;
    };

    void write(const std::string& markup, const std::string& text, Element* element)
    {
        _body += markup;
        for (; element != nullptr; element = element->outer)
        {
            element->text += text;
        }
    }

    void reference(Element* element)
    {
        _body += "&inner;";
        if (_declarations.empty())
        {
            _declarations = "<!ENTITY inner '/etc'>";
        }
        for (; element != nullptr; element = element->outer)
        {
            element->refersToEntity = true;
        }
    }

    void children(int depth, bool isInComponent, bool isInRoot, Element* element)
    {
        for (unsigned int count = _input.below(5); count > 0 && ++_pieces < 200; --count)
        {
            piece(depth, isInComponent, isInRoot, element);
        }
    }

    void piece(int depth, bool isInComponent, bool isInRoot, Element* element)
    {
        switch (_input.below(14))
        {
        case 0:
        case 1:
            return component(depth, element);
        case 2:
        case 3:
        case 4:
            return root(depth, isInComponent, element);
        case 5:
            _body += "<ZolFileSystem a='1' b=\"internal_root\">";
            children(depth + 1, isInComponent, isInRoot, element);
            _body += "</ZolFileSystem>";
            return;
        case 6:
            return write("&lt;&#65;&#x2f;", "<A/", element);
        case 7:
            return write("<![CDATA[<internal_root>&inner;]]>", "<internal_root>&inner;", element);
        case 8:
            return write("<!-- <internal_root> --><?internal_root x?>", "", element);
        case 9:
            return write(" \n\t", " \n\t", element);
        case 10:
            return _input.chance(4) ? reference(element) : write("/fs", "/fs", element);
        case 11:
            _isAscii = false;
            return write("\xc3\xa4", "\xc3\xa4", element);
        case 12:
            if (_input.chance(1))
            {
                _declarations = _input.chance(8) ? "<!ENTITY inner SYSTEM 'secret'>"
                                                 : "<!ENTITY inner SYSTEM 'file://pipe'>";
                reference(element);
                _isReadable = false;
            }
            return;
        default:
            return write("/plain", "/plain", element);
        }
    }

    void component(int depth, Element* element)
    {
        _components.emplace_back();
        const std::size_t mine = _components.size() - 1;
        _open.push_back(mine);
        _body += "<" + std::string(COMPONENT) + ">";
        children(depth + 1, true, false, element);
        _body += "</" + std::string(COMPONENT) + ">";
        _open.pop_back();
    }

    void root(int depth, bool /*isInComponent*/, Element* element)
    {
        _elements.push_back(std::make_unique<Element>());
        Element* const own = _elements.back().get();
        own->outer = element;
        for (const std::size_t component : _open)
        {
            _components[component].push_back(own);
        }
        _body += "<internal_root>";
        children(depth + 1, true, true, own);
        _body += "</internal_root>";
    }

    Input& _input;
    std::string _declarations;
    std::string _body;
    std::vector<std::unique_ptr<Element>> _elements;
    std::vector<std::vector<Element*>> _components; // the roots of each
    std::vector<std::size_t> _open;                 // components
    int _pieces = 0;
    bool _isReadable = true;
    bool _isAscii = true;
};

/// The same text in UTF-16, of whose characters the generator uses none of more than one byte there.
std::string inUtf16(const std::string& text, bool isBigEndian)
{
    std::string result = isBigEndian ? "\xfe\xff" : "\xff\xfe";
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        unsigned int code = static_cast<unsigned char>(text[i]);
        if (code >= 0xc0 && i + 1 < text.size())
        {
            code = (code << 6U) | (static_cast<unsigned char>(text[++i]) & 0x3fU);
        }
        const char low = static_cast<char>(code);
        result += isBigEndian ? '\0' : low;
        result += isBigEndian ? low : '\0';
    }
    return result;
}

std::string inLatin1(const std::string& text)
{
    const std::string wide = inUtf16(text, true);
    std::string result = "<?xml version='1.0' encoding='ISO-8859-1'?>";
    for (std::size_t i = 3; i < wide.size(); i += 2)
    {
        result += wide[i];
    }
    return result;
}

void write(const std::string& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
}

void expectAnswer(const Answer& found, const Answer& expected, const std::string& document)
{
    expectSame(found.value_or("can't be read"), expected.value_or("can't be read"), "the answer", document);
}

} // namespace

// The first byte says what the others are: a document as text or in a file, what is to be repeated in one, or
// the choices of one that is generated, of which the answer is known.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Surroundings surroundings;
    Input input(data, size);
    const unsigned int mode = input.below(8);
    if (mode < 4)
    {
        Generator generator(input);
        const std::string text = generator.text();
        std::string config = text;
        if (mode != 0)
        {
            config = surroundings.document();
            write(config, mode == 1 ? text : mode == 2 ? inLatin1(text) : inUtf16(text, input.chance(8)));
        }
        expectAnswer(watchedAnswerOf(config, surroundings), generator.answer(), text);
        return 0;
    }
    if (mode == 4)
    {
        // as the string of a host, which has no zero byte
        watchedAnswerOf(input.rest().c_str(), surroundings);
        return 0;
    }
    std::string document = input.rest();
    if (mode == 5)
    {
        // "before|repeated|after", as often as a document may hold it
        const auto first = document.find('|');
        const auto second = first == std::string::npos ? first : document.find('|', first + 1);
        if (second != std::string::npos)
        {
            const std::string repeated = document.substr(first + 1, second - first - 1);
            std::string text = document.substr(0, first);
            while (!repeated.empty() && text.size() < 250'000)
            {
                text += repeated;
            }
            document = text + document.substr(second + 1);
        }
    }
    write(surroundings.document(), document);
    watchedAnswerOf(surroundings.document(), surroundings);
    return 0;
}
