#include "CommandParser.h"

#include <sstream>

#include "arguments.h"
#include "helpTexts.h"
#include "suggestion.h"
#include "text/formatted.h"

namespace {

constexpr const char* HELP = "help";

}  // namespace

CommandParser::CommandParser()
{
    m_app.require_subcommand(1);
    m_app.fallthrough();
    m_app.footer(generalFooter());
    m_app.set_version_flag("--version", "zav " ZAV_VERSION, "Print the version and exit");
    addFormat(m_app, "table|json|csv");
    addDebug(m_app);
}

Request CommandParser::parse(int argc, char** argv)
{
    try {
        m_app.parse(argc, argv);
        return m_request;
    } catch (const CLI::Success& success) {
        return requestToPrint(textFor(success));
    } catch (const CLI::ParseError& error) {
        throw UsageError(textFor(error), whereHelpIs());
    }
}

Format CommandParser::listingFormat() const
{
    return valueNamed<Format>(
        {{"table", Format::TABLE}, {"json", Format::JSON}, {"csv", Format::CSV}}, m_format,
        "--format");
}

Format CommandParser::recordFormat() const
{
    return valueNamed<Format>({{"table", Format::TABLE}, {"json", Format::JSON}}, m_format,
                              "--format");
}

Request CommandParser::requestToPrint(const std::string& text)
{
    return {Format::TABLE, [text](Output& output) {
                output.printText(text);
                return ExitStatus::DONE;
            }};
}

CLI::App* CommandParser::addCommand(const std::string& name, const std::string& description,
                                    const std::string& footer)
{
    CLI::App* command = m_app.add_subcommand(name, description);
    command->footer(footer);
    return command;
}

CLI::App* CommandParser::addFileCommand(const std::string& name, const std::string& description,
                                        const std::string& footer)
{
    CLI::App* command = addCommand(name, description, footer);
    addFile(*command, "FILE", m_file, "The database file");
    addDebug(*command);
    return command;
}

void CommandParser::addFormat(CLI::App& app, const std::string& formats)
{
    app.add_option("--format", m_format, "How results are written; table unless given")
        ->type_name(formats);
}

void CommandParser::addDebug(CLI::App& app)
{
    addNumber<int>(app, "--debug", m_debugLevel,
                   "The library's lines on standard error: 0 errors only, 1 and 2 more")
        ->type_name("LEVEL");
}

void CommandParser::refuseGeneral(const std::string& option, const std::string& reason) const
{
    if (m_app.count(option) > 0) {
        throw CLI::ValidationError(option, reason);
    }
}

void CommandParser::addHelp()
{
    CLI::App* command = addCommand(HELP, "Print the help of a command", "");
    command->add_option("COMMAND", m_helpTopic, "The command")->type_name("");
    command->callback([this] { m_request = requestToPrint(helpOn(m_helpTopic)); });
}

std::string CommandParser::helpOn(const std::string& name) const
{
    if (name.empty()) {
        // Asked itself, CLI11 would print the help of the command that has been given: help.
        return m_app.get_formatter()->make_help(&m_app, m_app.get_name(),
                                                CLI::AppFormatMode::Normal);
    }
    for (const CLI::App* command : commands()) {
        if (command->get_name() == name) {
            return command->help(m_app.get_name());
        }
    }
    throw CLI::ValidationError(
        formatted("there is no command {}{}", name, suggestion(name, commandNames())));
}

std::string CommandParser::textFor(const CLI::Success& success) const
{
    std::ostringstream text;
    m_app.exit(success, text, text);
    return text.str();
}

/// A word too many is the likelier mistake than what is then missing.
std::string CommandParser::textFor(const CLI::ParseError& error) const
{
    constexpr bool OF_ALL_COMMANDS = true;
    const std::vector<std::string> unknown = m_app.remaining(OF_ALL_COMMANDS);
    if (unknown.empty()) {
        return error.what();
    }
    std::string text = formatted("not understood: {}", listed(unknown, " "));
    for (const std::string& word : unknown) {
        text += suggestionFor(word);
    }
    return text;
}

std::string CommandParser::suggestionFor(const std::string& word) const
{
    if (word.rfind("--", 0) == 0) {
        return suggestion(word.substr(0, word.find('=')), optionNames());
    }
    return givenCommand() == nullptr ? suggestion(word, commandNames()) : "";
}

/// @return null: none yet.
const CLI::App* CommandParser::givenCommand() const
{
    const auto given = m_app.get_subcommands();
    return given.empty() ? nullptr : given.front();
}

std::vector<const CLI::App*> CommandParser::commands() const
{
    return m_app.get_subcommands([](const CLI::App*) { return true; });
}

std::vector<std::string> CommandParser::commandNames() const
{
    std::vector<std::string> names;
    for (const CLI::App* command : commands()) {
        names.push_back(command->get_name());
    }
    return names;
}

std::vector<std::string> CommandParser::optionNames() const
{
    std::vector<std::string> names;
    const CLI::App* command = givenCommand();
    for (const CLI::Option* option : (command == nullptr ? &m_app : command)->get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    return names;
}

std::string CommandParser::whereHelpIs() const
{
    const CLI::App* command = givenCommand();
    return command == nullptr || command->get_name() == HELP
               ? "zav --help"
               : formatted("zav {} --help", command->get_name());
}
