#pragma once

#include <memory>
#include <string>
#include <vector>

/// What the readers are asked: each of the questions that the service answers.
enum class Question { ALL_FAULT_TYPES, ALL_DESCRIPTIONS, FAULT_TYPE_BY_CODE, TEXTS_OF_CODE };

/// One way of reading a database file, which is open as long as the object lives.
class Reader {
public:
    virtual ~Reader() = default;

    /// Reads the answer, and forgets it.
    ///
    /// @param code  for the two lookups.
    /// @return the number of rows.
    virtual std::size_t ask(Question question, unsigned short code) = 0;
};

/// A reader that is given the SQL text which the service sends for a question.
class SqlReader : public Reader {
public:
    std::size_t ask(Question question, unsigned short code) override;

private:
    virtual std::size_t readFaultTypes(const std::string& sql) = 0;
    virtual std::size_t readDescriptions(const std::string& sql) = 0;
};

/// The library's page cache for every reader, so that no difference between them comes from it.
constexpr const char* PAGE_CACHE_SQL = "PRAGMA cache_size=-20480";

std::unique_ptr<Reader> openZav(const std::string& file);
std::unique_ptr<Reader> openTable(const std::string& file);
std::unique_ptr<Reader> openUnlockedTable(const std::string& file);
std::unique_ptr<Reader> openStep(const std::string& file);
std::unique_ptr<Reader> openSqliteCpp(const std::string& file);
std::unique_ptr<Reader> openSoci(const std::string& file);

struct ReaderKind {
    const char* name;
    std::unique_ptr<Reader> (*open)(const std::string& file);
};

/// All but the first open the file as their documentation shows it.
constexpr ReaderKind READERS[] = {
    {"zav", openZav},
    {"table", openTable},                  ///< sqlite3_get_table(), nothing done with the result
    {"unlockedTable", openUnlockedTable},  ///< the same without SQLite's locks, as zav opens it
#ifdef ZAV_BENCH_PEERS
    {"step", openStep},  ///< sqlite3_step(), its values put straight into the records
    {"SQLiteCpp", openSqliteCpp},
    {"SOCI", openSoci},
#endif
};

struct QuestionKind {
    const char* name;
    Question question;
};

constexpr QuestionKind QUESTIONS[] = {{"allFaultTypes", Question::ALL_FAULT_TYPES},
                                      {"allDescriptions", Question::ALL_DESCRIPTIONS},
                                      {"faultTypeByCode", Question::FAULT_TYPE_BY_CODE},
                                      {"textsOfCode", Question::TEXTS_OF_CODE}};
