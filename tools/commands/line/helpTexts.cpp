#include "helpTexts.h"

#include "check/FindingKind.h"
#include "text/TextWidth.h"
#include "text/formatted.h"

namespace {

constexpr std::size_t WIDTH = 80;

constexpr const char* EXAMPLES = R"(Examples:
  zav faults faults.db                              all fault types
  zav fault faults.db 17                            one, with its texts
  zav texts faults.db --language 2 --format csv     the texts in one language, for a spreadsheet
  zav sql faults.db insert | sqlite3 -bail copy.db  into a file that has the empty tables
  zav check faults.db                               what would surprise an application
  zav info faults.db --source 1                     which file it is, what is translated
  zav install faults.db /data/faults.db             safely into the place of the old file
  zav search faults.db door open                    the fault types that have these words
  zav html faults.db >manual.html                   a manual for a laptop or phone
  zav export faults.db sources                      as text for version control
  zav build sources faults.db --release 5           a file of such text
  zav diff released.db faults.db                    what the new file changes
  zav translate faults.db --from 1 --to 3 >fr.xlf   what a translator fills in
  zav merge faults.db fr.xlf new.db                 a copy with the translations

zav help COMMAND tells what a command takes.

)";

std::string paragraph(const std::string& text)
{
    return listed(wrap(text, WIDTH), "\n");
}

std::string exitStatuses(const std::string& foundNothing)
{
    const std::string one = foundNothing.empty() ? "" : ", 1 " + foundNothing;
    return paragraph("Exit status: 0 done" + one +
                     ", 2 wrong usage, 3 the file cannot be read or the output cannot be written.");
}

std::string exampleOf(const std::string& example)
{
    return "Example:\n  " + example + "\n\n";
}

}  // namespace

std::string generalFooter()
{
    return EXAMPLES + exitStatuses("not found or findings");
}

std::string footer(const std::string& example, const std::string& foundNothing)
{
    return exampleOf(example) + exitStatuses(foundNothing);
}

std::string checkFooter()
{
    std::string text = "Kinds of finding:\n";
    for (const KindInfo& info : allKinds()) {
        text += formatted("  {:<21} {:<8} {}\n", info.name, nameOf(info.severity), info.help);
    }
    return text + "\n" + exampleOf("zav check --languages 1,2,3 faults.db") +
           paragraph(
               "Exit status: 0 nothing from --fail-on up, 1 findings, 2 wrong usage, 3 a file "
               "cannot be read or the output cannot be written; of several files, the worst one.");
}

std::string installFooter()
{
    return exampleOf("zav install faults.db /data/faults.db") +
           paragraph(
               "Exit status: 0 the new file is there for good, 1 refused for what the new file "
               "is, 2 wrong usage, 3 it could not be done; with 1 to 3, the old file is as it "
               "was.");
}
