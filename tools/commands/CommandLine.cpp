#include "CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
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
#include "text/formatted.h"
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
    throw CLI::ValidationError(option,
                               formatted(R"("{}" is no kind of finding; the nearest is "{}")", name,
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
            "--expect", formatted(R"("{}" is no content hash: these have {} hexadecimal digits)",
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
    return formatted("the file comes first: zav {} {} {}", command, file, other);
}

/// @return the names of a list, each of which must be one of the known.
std::vector<std::string> columnsFrom(const std::string& list, const std::vector<std::string>& known)
{
    std::istringstream stream(list + ',');
    std::vector<std::string> names;
    for (std::string name; std::getline(stream, name, ',');) {
        if (std::find(known.begin(), known.end(), name) == known.end()) {
            throw CLI::ValidationError(
                "--columns", formatted(R"("{}" is none of {})", name, listed(known, ",")));
        }
        names.push_back(name);
    }
    return names;
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
        CLI::App* command =
            addFileCommand("faults", "Show all fault types",
                           footer("zav faults faults.db --stored --columns code,alias"));
        addListing(*command, faultTypeModel().columnNames());
        command->callback([this] {
            runOnDatabase(listingFormat(),
                          [options = m_listing](Database& database, Output& output) {
                              return runFaults(database, options, output);
                          });
        });
    }

    void addFault()
    {
        CLI::App* command =
            addFileCommand("fault", "Show one fault type, with its texts",
                           footer("zav fault faults.db DOOR_OPEN --language 1",
                                  "no fault type, or several, of the code or alias"));
        command
            ->add_option("CODE|ALIAS", m_code,
                         "Code of the fault type, 0 to 65535; or its alias, in any letter case")
            ->required()
            ->type_name("");
        addListing(*command, faultColumns());
        addNumbers(*command, "--language", m_fault.languages,
                   "Only the texts in this language; may be repeated")
            ->type_name("LANGUAGE");
        command->callback([this] {
            if (isNumber(m_file) && !isNumber(m_code)) {
                throw CLI::ValidationError(fileComesFirst("fault", m_code, m_file));
            }
            takeCodeOrAlias();
            m_fault.listing = m_listing;
            runOnDatabase(listingFormat(), [request = m_fault](Database& database, Output& output) {
                return runFault(database, request, output);
            });
        });
    }

    void takeCodeOrAlias()
    {
        if (m_code.empty()) {
            throw CLI::ValidationError("CODE|ALIAS", "is empty");
        }
        if (isNumber(m_code)) {
            m_fault.code = numberFrom<std::uint16_t>(m_code, "CODE");
        } else {
            m_fault.alias = m_code;
        }
    }

    void addTexts()
    {
        CLI::App* command = addFileCommand("texts", "Show the texts of fault types",
                                           footer("zav texts faults.db --language 2 --format csv",
                                                  "no text has the code and language"));
        addListing(*command, textsColumns());
        addNumbers(*command, "--code", m_texts.codes,
                   "Only those of this fault type; may be repeated")
            ->type_name("CODE");
        addNumbers(*command, "--language", m_texts.languages,
                   "Only those in this language; may be repeated")
            ->type_name("LANGUAGE");
        command->callback([this] {
            m_texts.listing = m_listing;
            runOnDatabase(listingFormat(), [request = m_texts](Database& database, Output& output) {
                return runTexts(database, request, output);
            });
        });
    }

    /// @param columns  the names of those that there are.
    void addListing(CLI::App& app, const std::vector<std::string>& columns)
    {
        addFormat(app, "table|json|csv");
        app.add_flag("--stored", m_listing.isStored,
                     "The values as the file holds them, not as the library delivers them");
        const auto store = [this, columns](const std::string& list) {
            m_listing.columns = columnsFrom(list, columns);
        };
        app.add_option_function<std::string>("--columns", store,
                                             "The columns that are wanted, in their order")
            ->type_name("NAME,NAME,...");
    }

    void addSql()
    {
        const Choices<Statement> statements = {{"insert", Statement::INSERT},
                                               {"update", Statement::UPDATE}};
        CLI::App* command =
            addFileCommand("sql", "Write the statement of every row, to be run",
                           footer("zav sql faults.db insert | sqlite3 -bail copy.db"));
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
            runOnDatabase(Format::TABLE,
                          [statement = valueNamed(statements, m_statement, "STATEMENT"),
                           tables = m_tables](Database& database, Output& output) {
                              return runSql(database, statement, tables, output);
                          });
        });
    }

    void addCheck()
    {
        CLI::App* command =
            addCommand("check", "Find what would surprise an application", checkFooter());
        addFile(*command, "FILE", m_check.files, "The database files");
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
            m_check.format = valueNamed<CheckFormat>({{"table", CheckFormat::LINES},
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
        CLI::App* command =
            addCommand("info", "Say what a file is", footer("zav info faults.db --source 1"));
        addFile(*command, "FILE", m_info.files, "The database files");
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
        addFile(*command, "NEW", m_install.source, "The new file");
        addFile(*command, "TARGET", m_install.target, "The file that it replaces");
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
    ListingOptions m_listing;
    std::string m_code;
    FaultRequest m_fault;
    TextsRequest m_texts;
    std::string m_statement;
    TableChoice m_tables = TableChoice::ALL;
};

}  // namespace

Request parseCommandLine(int argc, char** argv)
{
    return isForAuthors(argc, argv) ? Request{Format::TABLE, authorProgram(argv)}
                                    : Parser().parse(argc, argv);
}
