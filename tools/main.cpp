#include <exception>

#include "commands/CommandLine.h"
#include "database/DatabaseErrors.h"
#include "database/LibraryLines.h"
#include "text/TextWidth.h"
#include "text/message.h"

namespace {

ExitStatus run(int argc, char** argv, std::ostream& results)
{
    const Request request = parseCommandLine(argc, argv);
    Output output(results, standardOutput());
    output.setFormat(request.format);
    const ExitStatus status = request.run(output);
    output.finish();
    return status;
}

}  // namespace

int main(int argc, char** argv)
{
    initTextWidth();
    LibraryLines libraryLines;
    ExitStatus status = ExitStatus::DONE;
    try {
        status = run(argc, argv, libraryLines.results());
    } catch (const UsageError& error) {
        printMessage(error.what());
        printMessage("see " + error.help());
        status = ExitStatus::USAGE;
    } catch (const AmbiguousCode& error) {
        printMessage(error.what());
        status = ExitStatus::NOT_FOUND_OR_FINDINGS;
    } catch (const std::exception& error) {
        printMessage(error.what());
        status = ExitStatus::UNREADABLE;
    }
    return static_cast<int>(status);
}
