#pragma once

#include <ostream>
#include <streambuf>
#include <string>

/// While it lives, what the library writes to std::cout goes to standard error, safe to show on a
/// terminal, so that standard output holds the command's results only.
class LibraryLines {
public:
    LibraryLines();
    ~LibraryLines();
    LibraryLines(const LibraryLines&) = delete;
    LibraryLines& operator=(const LibraryLines&) = delete;

    /// @return the way to standard output.
    std::ostream& results() { return m_results; }

    /// @return SQLite's reason for the last failed query.
    static const std::string& lastFailure() { return m_lastFailure; }

private:
    static std::string m_lastFailure;

    class ToStandardError : public std::streambuf {
    protected:
        int_type overflow(int_type character) override;

    private:
        void takeLine() const;

        std::string m_line;
    };

    std::ostream m_results;
    ToStandardError m_lines;
};

/// Keeps the library silent while it lives; standard output is then as it was.
class LibrarySilence {
public:
    LibrarySilence();
    ~LibrarySilence();
    LibrarySilence(const LibrarySilence&) = delete;
    LibrarySilence& operator=(const LibrarySilence&) = delete;

private:
    std::ios::iostate m_stateBefore;
};
