#include <exception>

#include "CommandLine.h"
#include "LibraryLines.h"
#include "TextWidth.h"
#include "message.h"

namespace {

ExitStatus run(int argc, char** argv, std::ostream& results)
{
    Request request;
    Output output(results, standardOutput());
    try {
        request = parseCommandLine(argc, argv);
    } catch (const TextRequest& wanted) {
        output.printText(wanted.what());
        output.finish();
        return ExitStatus::DONE;
    }
    output.setFormat(request.format);
    Database database(request.file, request.debugLevel);
    const ExitStatus status = request.command(database, output);
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
        printMessage("see zav --help");
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
