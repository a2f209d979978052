#include "CommandLine.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <charconv>
#include <limits>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "CheckCommand.h"
#include "FaultCommand.h"
#include "FaultsCommand.h"
#include "InfoCommand.h"
#include "InstallCommand.h"
#include "SqlCommand.h"
#include "TextsCommand.h"
#include "database/Database.h"
#include "database/TableModel.h"
#include "text/nearest.h"

namespace {

constexpr const char* EXAMPLES = R"(Examples:
  zav faults faults.db                              all fault types
  zav fault faults.db 17                            one, with its texts
  zav texts faults.db --language 2 --format csv     the texts in one language, for a spreadsheet
  zav sql faults.db insert | sqlite3 -bail copy.db  into a file that has the empty tables
  zav check faults.db                               what would surprise an application

Exit status: 0 done, 1 not found or findings, 2 wrong usage,
3 the file cannot be read or the output cannot be written.)";

/// The whole text as a decimal number, without sign or blanks.
template <class Number>
Number numberFrom(const std::string& text, const std::string& option)
{
    Number number = 0;
    const char* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || read != end) {
        throw CLI::ValidationError(option, fmt::format(R"("{}" is no number from {} to {})", text,
                                                       std::numeric_limits<Number>::min(),
                                                       std::numeric_limits<Number>::max()));
    }
    return number;
}

template <class Number, class Target>
CLI::Option* addNumber(CLI::App& app, const std::string& option, Target& target,
                       const std::string& description)
{
    const auto store = [&target, option](const std::string& text) {
        target = numberFrom<Number>(text, option);
    };
    return app.add_option_function<std::string>(option, store, description);
}

template <class Value>
using Choices = std::vector<std::pair<std::string, Value>>;

template <class Value>
std::string namesOf(const Choices<Value>& choices)
{
    std::string names;
    for (const auto& [name, value] : choices) {
        names += (names.empty() ? "" : "|") + name;
    }
    return names;
}

template <class Value>
Value chosen(const Choices<Value>& choices, const std::string& text, const std::string& option)
{
    for (const auto& [name, value] : choices) {
        if (name == text) {
            return value;
        }
    }
    throw CLI::ValidationError(option,
                               fmt::format(R"("{}" is none of {})", text, namesOf(choices)));
}

template <class Value>
CLI::Option* addChoice(CLI::App& app, const std::string& option, Value& target,
                       const Choices<Value>& choices, const std::string& description)
{
    const auto store = [&target, choices, option](const std::string& text) {
        target = chosen(choices, text, option);
    };
    return app.add_option_function<std::string>(option, store, description)
        ->type_name(namesOf(choices));
}

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
    if (hash.size() != DIGITS ||
        hash.find_first_not_of("0123456789abcdef") != std::string::npos) {
        throw CLI::ValidationError(
            "--expect", fmt::format(R"("{}" is no content hash: these have {} hexadecimal digits)",
                                    text, DIGITS));
    }
    return hash;
}

/// What the options of zav check choose from.
std::string checkFooter()
{
    std::string text =
        "--format is table (the default: lines for people and editors), json, csv or sarif.\n\n"
        "Kinds of finding:\n";
    for (const KindInfo& info : allKinds()) {
        text += fmt::format("  {:<21} {:<8} {}\n", info.name, nameOf(info.severity), info.help);
    }
    return text +
           "\nExit status: 0 nothing from --fail-on up, 1 findings, 2 wrong usage, 3 a file cannot "
           "be\n"
           "read or the output cannot be written; of several files, the worst one.";
}

/// Reads the arguments of one call into a request.
class Parser {
public:
    Parser()
    {
        m_app.require_subcommand(1);
        m_app.fallthrough();
        m_app.footer(EXAMPLES);
        m_app.set_version_flag("--version", "zav " ZAV_VERSION, "Print the version and exit");
        m_app.add_option("--format", m_format, "How results are written; table unless given")
            ->type_name("table|json|csv");
        addNumber<int>(m_app, "--debug", m_debugLevel,
                       "The library's lines on standard error: 0 errors only, 1 and 2 more")
            ->type_name("LEVEL");
        addFaults();
        addFault();
        addTexts();
        addSql();
        addCheck();
        addInfo();
        addInstall();
    }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    Request parse(int argc, char** argv)
    {
        try {
            m_app.parse(argc, argv);
            return request();
        } catch (const CLI::Success& success) {
            return printing(textFor(success));
        } catch (const CLI::ParseError& error) {
            throw UsageError(textFor(error));
        }
    }

private:
    using Command = std::function<ExitStatus(Database&, Output&)>;

    Request request() const
    {
        if (m_run) {
            return {m_format2, m_run};
        }
        return {listingFormat(), [command = m_command, file = m_file, level = m_debugLevel](Output& output) {
                    Database database(file, level);
                    return command(database, output);
                }};
    }

    Format listingFormat() const
    {
        return chosen<Format>(
            {{"table", Format::TABLE}, {"json", Format::JSON}, {"csv", Format::CSV}}, m_format,
            "--format");
    }

    static Request printing(const std::string& text)
    {
        return {Format::TABLE, [text](Output& output) {
                    output.printText(text);
                    return ExitStatus::DONE;
                }};
    }

    CLI::App* addCommand(const std::string& name, const std::string& description)
    {
        CLI::App* command = m_app.add_subcommand(name, description);
        command->footer("Further options, examples and the exit status: zav --help");
        command->add_option("FILE", m_file, "The database file")->required()->type_name("");
        return command;
    }

    void addFaults()
    {
        addCommand("faults", "Show all fault types")->callback([this] { m_command = runFaults; });
    }

    void addFault()
    {
        CLI::App* command = addCommand("fault", "Show one fault type, with its texts");
        addNumber<std::uint16_t>(*command, "CODE", m_code, "Code of the fault type, 0 to 65535")
            ->required()
            ->type_name("");
        command->callback([this] {
            m_command = [code = m_code](Database& database, Output& output) {
                return runFault(database, code, output);
            };
        });
    }

    void addTexts()
    {
        CLI::App* command = addCommand("texts", "Show the texts of fault types");
        addNumber<std::uint32_t>(*command, "--code", m_filter.code, "Only those of this fault type")
            ->type_name("CODE");
        addNumber<std::uint16_t>(*command, "--language", m_filter.language,
                                 "Only those in this language")
            ->type_name("LANGUAGE");
        command->callback([this] {
            m_command = [filter = m_filter](Database& database, Output& output) {
                return runTexts(database, filter, output);
            };
        });
    }

    void addSql()
    {
        CLI::App* command = addCommand("sql", "Write the statement of every row, to be run");
        addChoice<Statement>(*command, "STATEMENT", m_statement,
                             {{"insert", Statement::INSERT}, {"update", Statement::UPDATE}},
                             "The kind of statement")
            ->required();
        addChoice<TableChoice>(*command, "--table", m_tables,
                               {{faultTypeModel().name, TableChoice::FAULT_TYPE_DEFINITION},
                                {descriptionsModel().name, TableChoice::DESCRIPTIONS},
                                {"all", TableChoice::ALL}},
                               "Of this table; all unless given");
        command->callback([this] {
            if (m_app.count("--format") > 0) {
                throw CLI::ValidationError("--format", "zav sql writes nothing but SQL");
            }
            m_command = [statement = m_statement, tables = m_tables](Database& database,
                                                                     Output& output) {
                return runSql(database, statement, tables, output);
            };
        });
    }

    void addCheck()
    {
        CLI::App* command =
            m_app.add_subcommand("check", "Find what would surprise an application");
        command->footer(checkFooter());
        command->add_option("FILE", m_check.files, "The database files")->required()->type_name("");
        command->add_flag("--all", "A line for each finding, rather than one for many");
        addChoice<Severity>(
            *command, "--fail-on", m_check.failOn,
            severities(),
            "From which severity on the status is 1; warning unless given");
        addKinds(*command, "--ignore", m_check.ignored, "Leave findings of this kind out");
        addKinds(*command, "--only", m_check.only, "Leave findings of all other kinds out");
        addLanguages(*command);
        command->callback([this, command] {
            m_check.isGrouped = command->count("--all") == 0;
            m_check.format = chosen<CheckFormat>({{"table", CheckFormat::LINES},
                                                  {"json", CheckFormat::JSON},
                                                  {"csv", CheckFormat::CSV},
                                                  {"sarif", CheckFormat::SARIF}},
                                                 m_format, "--format");
            m_run = [request = m_check](Output& output) { return runCheck(request, output); };
        });
    }

    void addInfo()
    {
        CLI::App* command = m_app.add_subcommand("info", "Say what a file is");
        command->add_option("FILE", m_info.files, "The database files")->required()->type_name("");
        addNumber<std::uint16_t>(*command, "--source", m_info.source,
                                 "Count the fault types whose name and description are those of "
                                 "this language")
            ->type_name("LANGUAGE");
        command->callback([this] {
            m_format2 = listingFormat();
            m_run = [request = m_info](Output& output) { return runInfo(request, output); };
        });
    }

    void addInstall()
    {
        CLI::App* command =
            m_app.add_subcommand("install", "Put a checked copy of a file in the place of another");
        command->add_option("NEW", m_install.source, "The new file")->required()->type_name("");
        command->add_option("TARGET", m_install.target, "The file that it replaces")
            ->required()
            ->type_name("");
        addChoice<Severity>(*command, "--fail-on", m_install.failOn, severities(),
                            "From which severity on a finding refuses the file; error unless given");
        command->add_option_function<std::string>(
                   "--expect",
                   [this](const std::string& hash) { m_install.expectedContent = contentFrom(hash); },
                   "Refuse a file of another content; the hash is that of zav info")
            ->type_name("HASH");
        command->add_flag("--downgrade", m_install.allowsDowngrade,
                          "Allow a release number lower than the old file's");
        command->callback([this] {
            m_format2 = listingFormat();
            if (m_format2 == Format::CSV) {
                throw CLI::ValidationError("--format", "zav install writes a table or JSON");
            }
            m_run = [request = m_install](Output& output) { return runInstall(request, output); };
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

    std::string textFor(const CLI::Success& success) const
    {
        std::ostringstream text;
        m_app.exit(success, text, text);
        return text.str();
    }

    /// A word too many is the likelier mistake than what is then missing.
    std::string textFor(const CLI::ParseError& error) const
    {
        constexpr bool OF_ALL_COMMANDS = true;
        const std::vector<std::string> unknown = m_app.remaining(OF_ALL_COMMANDS);
        return unknown.empty() ? error.what()
                               : fmt::format("not understood: {}", fmt::join(unknown, " "));
    }

    CLI::App m_app{"Looks at a database of fault definitions.", "zav"};
    std::string m_file;
    int m_debugLevel = 0;
    std::string m_format = "table";
    Command m_command;
    std::function<ExitStatus(Output&)> m_run;
    Format m_format2 = Format::TABLE;
    CheckRequest m_check;
    InfoRequest m_info;
    InstallRequest m_install;
    std::uint16_t m_code = 0;
    TextsFilter m_filter;
    Statement m_statement = Statement::INSERT;
    TableChoice m_tables = TableChoice::ALL;
};

}  // namespace

Request parseCommandLine(int argc, char** argv)
{
    return Parser().parse(argc, argv);
}
