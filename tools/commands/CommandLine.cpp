#include "CommandLine.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cctype>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "author/CheckCommand.h"
#include "author/InfoCommand.h"
#include "author/SqlCommand.h"
#include "database/Database.h"
#include "database/TableModel.h"
#include "line/CommandParser.h"
#include "line/arguments.h"
#include "line/authorCommands.h"
#include "line/helpTexts.h"
#include "technician/FaultCommand.h"
#include "technician/FaultsCommand.h"
#include "technician/InstallCommand.h"
#include "technician/TextsCommand.h"
#include "text/nearest.h"

namespace {

FindingKind kindFrom(const std::string& name, const std::string& option)
{
    if (const std::optional<FindingKind> kind = kindNamed(name)) {
        return *kind;
    }
    std::vector<std::string> names;
    for (const KindInfo& info : allKinds()) {
        names.emplace_back(info.name);
    }
    throw CLI::ValidationError(
        option, fmt::format(R"("{}" is no kind of finding; the nearest is "{}")", name,
                            nearest(name, names)));
}

Choices<Severity> severities()
{
    return {{"error", Severity::ERROR}, {"warning", Severity::WARNING}, {"note", Severity::NOTE}};
}

/// @return a content hash as zav info writes it.
std::string contentFrom(const std::string& text)
{
    constexpr std::size_t DIGITS = 64;
    std::string hash;
    for (const char character : text) {
        hash += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
    if (hash.size() != DIGITS || hash.find_first_not_of("0123456789abcdef") != std::string::npos) {
        throw CLI::ValidationError(
            "--expect", fmt::format(R"("{}" is no content hash: these have {} hexadecimal digits)",
                                    text, DIGITS));
    }
    return hash;
}

bool isNumber(const std::string& text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

std::string fileComesFirst(const std::string& command, const std::string& file,
                           const std::string& other)
{
    return fmt::format("the file comes first: zav {} {} {}", command, file, other);
}

/// The commands of zav itself.
class Parser : public CommandParser {
public:
    Parser()
    {
        addFaults();
        addFault();
        addTexts();
        addSql();
        addCheck();
        addInfo();
        addInstall();
        for (const AuthorCommand& command : authorCommands()) {
            addCommand(command.name, command.description, "");
        }
        addHelp();
    }

private:
    void addFaults()
    {
        CLI::App* command = addFileCommand("faults", "Show all fault types", exitStatuses());
        addFormat(*command, "table|json|csv");
        command->callback([this] { runOnDatabase(listingFormat(), runFaults); });
    }

    void addFault()
    {
        CLI::App* command = addFileCommand("fault", "Show one fault type, with its texts",
                                           exitStatuses("no fault type, or several, of the code"));
        addFormat(*command, "table|json|csv");
        command->add_option("CODE", m_code, "Code of the fault type, 0 to 65535")
            ->required()
            ->type_name("");
        command->callback([this] {
            if (isNumber(m_file) && !isNumber(m_code)) {
                throw CLI::ValidationError(fileComesFirst("fault", m_code, m_file));
            }
            runOnDatabase(listingFormat(), [code = numberFrom<std::uint16_t>(m_code, "CODE")](
                                               Database& database, Output& output) {
                return runFault(database, code, output);
            });
        });
    }

    void addTexts()
    {
        CLI::App* command = addFileCommand("texts", "Show the texts of fault types",
                                           exitStatuses("no text has the code and language"));
        addFormat(*command, "table|json|csv");
        addNumber<std::uint32_t>(*command, "--code", m_filter.code, "Only those of this fault type")
            ->type_name("CODE");
        addNumber<std::uint16_t>(*command, "--language", m_filter.language,
                                 "Only those in this language")
            ->type_name("LANGUAGE");
        command->callback([this] {
            runOnDatabase(listingFormat(), [filter = m_filter](Database& database, Output& output) {
                return runTexts(database, filter, output);
            });
        });
    }

    void addSql()
    {
        const Choices<Statement> statements = {{"insert", Statement::INSERT},
                                               {"update", Statement::UPDATE}};
        CLI::App* command =
            addFileCommand("sql", "Write the statement of every row, to be run", exitStatuses());
        command->add_option("STATEMENT", m_statement, "The kind of statement")
            ->required()
            ->type_name(namesOf(statements));
        addChoice<TableChoice>(*command, "--table", m_tables,
                               {{faultTypeModel().name, TableChoice::FAULT_TYPE_DEFINITION},
                                {descriptionsModel().name, TableChoice::DESCRIPTIONS},
                                {"all", TableChoice::ALL}},
                               "Of this table; all unless given");
        command->callback([this, statements] {
            refuseGeneral("--format", "zav sql writes nothing but SQL");
            if (m_file == "insert" || m_file == "update") {
                throw CLI::ValidationError(fileComesFirst("sql", m_statement, m_file));
            }
            runOnDatabase(Format::TABLE, [statement = chosen(statements, m_statement, "STATEMENT"),
                                          tables = m_tables](Database& database, Output& output) {
                return runSql(database, statement, tables, output);
            });
        });
    }

    void addCheck()
    {
        CLI::App* command =
            addCommand("check", "Find what would surprise an application", checkFooter());
        command->add_option("FILE", m_check.files, "The database files")->required()->type_name("");
        addFormat(*command, "table|json|csv|sarif");
        command->add_flag("--all", "A line for each finding, rather than one for many");
        addChoice<Severity>(*command, "--fail-on", m_check.failOn, severities(),
                            "From which severity on the status is 1; warning unless given");
        addKinds(*command, "--ignore", m_check.ignored, "Leave findings of this kind out");
        addKinds(*command, "--only", m_check.only, "Leave findings of all other kinds out");
        addLanguages(*command);
        command->callback([this, command] {
            refuseGeneral("--debug", "zav check keeps the library silent");
            m_check.isGrouped = command->count("--all") == 0;
            m_check.format = chosen<CheckFormat>({{"table", CheckFormat::LINES},
                                                  {"json", CheckFormat::JSON},
                                                  {"csv", CheckFormat::CSV},
                                                  {"sarif", CheckFormat::SARIF}},
                                                 m_format, "--format");
            m_request = {Format::TABLE,
                         [request = m_check](Output& output) { return runCheck(request, output); }};
        });
    }

    void addInfo()
    {
        CLI::App* command = addCommand("info", "Say what a file is", exitStatuses());
        command->add_option("FILE", m_info.files, "The database files")->required()->type_name("");
        addFormat(*command, "table|json|csv");
        addNumber<std::uint16_t>(*command, "--source", m_info.source,
                                 "Count the fault types whose name and description are those of "
                                 "this language")
            ->type_name("LANGUAGE");
        command->callback([this] {
            refuseGeneral("--debug", "zav info keeps the library silent");
            m_request = {listingFormat(),
                         [request = m_info](Output& output) { return runInfo(request, output); }};
        });
    }

    void addInstall()
    {
        CLI::App* command = addCommand(
            "install", "Put a checked copy of a file in the place of another", installFooter());
        command->add_option("NEW", m_install.source, "The new file")->required()->type_name("");
        command->add_option("TARGET", m_install.target, "The file that it replaces")
            ->required()
            ->type_name("");
        addFormat(*command, "table|json");
        addChoice<Severity>(
            *command, "--fail-on", m_install.failOn, severities(),
            "From which severity on a finding refuses the file; error unless given");
        const auto expect = [this](const std::string& hash) {
            m_install.expectedContent = contentFrom(hash);
        };
        command
            ->add_option_function<std::string>(
                "--expect", expect, "Refuse a file of another content than zav info says")
            ->type_name("HASH");
        command->add_flag("--downgrade", m_install.allowsDowngrade,
                          "Allow a release number lower than the old file's");
        command->callback([this] {
            refuseGeneral("--debug", "zav install keeps the library silent");
            m_request = {recordFormat(), [request = m_install](Output& output) {
                             return runInstall(request, output);
                         }};
        });
    }

    static void addKinds(CLI::App& app, const std::string& option, std::set<FindingKind>& kinds,
                         const std::string& description)
    {
        const auto store = [&kinds, option](const std::vector<std::string>& names) {
            for (const std::string& name : names) {
                kinds.insert(kindFrom(name, option));
            }
        };
        app.add_option_function<std::vector<std::string>>(option, store, description)
            ->type_name("KIND")
            ->allow_extra_args(false);
    }

    void addLanguages(CLI::App& app)
    {
        const std::string option = "--languages";
        const auto store = [this, option](const std::string& list) {
            std::istringstream numbers(list + ',');
            for (std::string number; std::getline(numbers, number, ',');) {
                m_check.languages.insert(numberFrom<std::uint16_t>(number, option));
            }
        };
        app.add_option_function<std::string>(option, store,
                                             "What every fault type should have a text in; the "
                                             "languages of the file unless given")
            ->type_name("N,N,...");
    }

    CheckRequest m_check;
    InfoRequest m_info;
    InstallRequest m_install;
    std::string m_code;
    TextsFilter m_filter;
    std::string m_statement;
    TableChoice m_tables = TableChoice::ALL;
};

}  // namespace

Request parseCommandLine(int argc, char** argv)
{
    return isForAuthors(argc, argv) ? Request{Format::TABLE, authorProgram(argv)}
                                    : Parser().parse(argc, argv);
}
