#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "commands/CommandLine.h"
#include "database/Database.h"

/// Reads the arguments of one call into a request: all that does not depend on which commands there
/// are. Those of the two programs derive from it.
class CommandParser {
public:
    /// @throws UsageError
    Request parse(int argc, char** argv);

    CommandParser(const CommandParser&) = delete;
    CommandParser& operator=(const CommandParser&) = delete;

protected:
    CommandParser();
    ~CommandParser() = default;

    CLI::App* addCommand(const std::string& name, const std::string& description,
                         const std::string& footer);

    /// One that reads a file with the library.
    CLI::App* addFileCommand(const std::string& name, const std::string& description,
                             const std::string& footer);

    /// The options that may stand before the command as well.
    void addFormat(CLI::App& app, const std::string& formats);
    void addDebug(CLI::App& app);

    void addHelp();

    /// Before the command, too, an option must be one of it.
    void refuseGeneral(const std::string& option, const std::string& reason) const;

    Format listingFormat() const;

    /// Of what is one record rather than a list.
    Format recordFormat() const;

    /// Lets a command run on the database that the library reads.
    template <class Command>
    void runOnDatabase(Format format, const Command& command)
    {
        m_request = {format, [command, file = m_file, level = m_debugLevel](Output& output) {
                         Database database(file, level);
                         return command(database, output);
                     }};
    }

    Request m_request;
    std::string m_file;
    std::string m_format = "table";
    int m_debugLevel = 0;

private:
    static Request requestToPrint(const std::string& text);
    std::string helpOn(const std::string& name) const;
    std::string textFor(const CLI::Success& success) const;
    std::string textFor(const CLI::ParseError& error) const;
    std::string suggestionFor(const std::string& word) const;
    const CLI::App* givenCommand() const;
    std::vector<const CLI::App*> commands() const;
    std::vector<std::string> commandNames() const;
    std::vector<std::string> optionNames() const;
    std::string whereHelpIs() const;

    CLI::App m_app{"Shows, makes, checks and installs a database of fault definitions.", "zav"};
    std::string m_helpTopic;
};
