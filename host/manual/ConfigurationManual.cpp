#include "manual/Mdoc.h"
#include "manual/Pages.h"

namespace zolhost::manual
{

namespace
{

void printDocument(Mdoc& page)
{
    page.subsection("Configuration document");
    page.text("The option");
    page.macro("Fl -config");
    page.text("of");
    page.reference("filem", 1);
    page.text("takes a document in XML that names the root directory of the tree:");
    page.verbatim("<configuration>\n"
                  "    <ZolFileManagementComponent>\n"
                  "        <ZolFileSystem>\n"
                  "            <internal_root>/var/node/files</internal_root>\n"
                  "        </ZolFileSystem>\n"
                  "    </ZolFileManagementComponent>\n"
                  "</configuration>\n");
    page.text("The document holds the element");
    page.macro("Ic ZolFileManagementComponent");
    page.text("exactly once, at any depth; a document with none or several is refused. The element");
    page.macro("Ic internal_root");
    page.text("stands exactly once below it, at any depth. Its text is the path as it stands, white space "
              "included. Where there is no such element, or there are several, or it is empty, the root is "
              "what the "
              "command");
    page.macro("Ql zolea file-system internalRoot");
    page.text("prints. Other elements don't matter.");
    page.paragraph();
    page.text(
        "Entities are not expanded and nothing outside the document is read. References to characters by "
        "their number, as");
    page.macro("Ql " + Mdoc::argument("&#38;") + " ,");
    page.text("stand for the character.");
}

void printPolicies(Mdoc& page)
{
    page.subsection("Policies");
    page.text("The option");
    page.macro("Fl -policies");
    page.text("takes a document in JSON that holds objects of the class FileGroupPolicy:");
    page.verbatim("{\"FileGroupPolicy\": [\n"
                  "    {\"id\": \"rotate\", \"fileGroup\": [\"FileGroup=logs\"]},\n"
                  "    {\"id\": \"cores\", \"fileGroup\": [\"FileGroup=cores\", \"FileGroup=tmp\"]}\n"
                  "]}\n");
    page.macro("Bl -tag -width Ds");
    page.macro("It Ic id");
    page.text("a text that isn't empty, has no comma and is the id of no other policy");
    page.macro("It Ic fileGroup");
    page.text("the distinguished names, whole or from below the root, of the directories that the policy "
              "reserves");
    page.macro("El");
    page.paragraph();
    page.text("Both must be there, and other keys are refused. The attribute");
    page.macro("Va reservedByPolicy");
    page.text("of a directory names the policies that reserve it.");
}

void printVariable(Mdoc& page, const char* name, const char* meaning)
{
    page.macro(std::string("It Ev ") + name);
    page.text(meaning);
}

void printEnvironment(Mdoc& page)
{
    page.section("ENVIRONMENT");
    page.macro("Bl -tag -width Ds");
    printVariable(
        page, "ZOL_LOG_LEVEL",
        "A number from 0. Log messages of that severity and below come out, and from 8 on all traces. "
        "If neither this nor ZOL_LOG_FILE is set, nothing does; with the file alone it is 4.");
    printVariable(
        page, "ZOL_LOG_FILE",
        "The file that the lines of the log are appended to. Without it they go to standard error.");
    printVariable(
        page, "PAGER",
        "The command that shows what is longer than the screen. It is \"less -R\" if it isn't set.");
    printVariable(page, "NO_COLOR", "Nothing is shown in colours if it is set and not empty.");
    printVariable(
        page, "XDG_STATE_HOME",
        "The folder that keeps the lines of sessions, in filem/history. It is ~/.local/state if it isn't "
        "set to an absolute path.");
    page.macro("El");
}

} // namespace

void printConfigurationManual(std::ostream& out)
{
    Mdoc page(out, "filem-config", 5);
    page.section("NAME");
    page.macro("Nm filem-config");
    page.macro("Nd what filem reads about a tree, its policies and its surroundings");
    page.section("DESCRIPTION");
    printDocument(page);
    printPolicies(page);
    printEnvironment(page);
    page.section("SEE ALSO");
    page.reference("filem", 1);
}

} // namespace zolhost::manual
