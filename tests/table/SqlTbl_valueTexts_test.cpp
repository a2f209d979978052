#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "support/CoutCapture.h"
#include "support/SampleTbl.h"
#include "support/reporterLines.h"
#include "zav/SqlTbl.h"

namespace {

constexpr std::uint32_t ALL_KINDS[] = {0, 1, 2, 3, 4, 5, 0x7fffffff, 0xffffffff};
constexpr std::uint32_t KINDS_OF_THE_HOOK[] = {0, 5, 0x7fffffff, 0xffffffff};

/// The text of one value, in both statements.
class SqlTblValueTexts : public testing::Test {
protected:
    SqlTblValueTexts()
    {
        m_table.record.wide = 18446744073709551615U;
        m_table.record.number = 4294967295;
        m_table.record.narrow = 65535;
        m_table.record.text = "a text";
        m_table.record.own = "own";
    }

    void bind(const std::string& sqlType, std::uint32_t type, void* field)
    {
        m_table.columns = {{"x", sqlType, OwnKindsTbl::kind(type), field}};
    }

    /// Expects a value text of a bound column, and no line.
    void expectText(const std::string& sqlType, std::uint32_t type, void* field,
                    const std::string& expected)
    {
        bind(sqlType, type, field);
        const CoutCapture capture;
        EXPECT_EQ(m_table.getSqlInsertValues(), "INSERT INTO sample('x') VALUES(" + expected + ")")
            << sqlType << " " << type;
        EXPECT_EQ(m_table.getSqlUpdateValues(), "UPDATE sample SET 'x'=" + expected)
            << sqlType << " " << type;
        EXPECT_EQ(capture.text(), "");
    }

    /// Expects a value text of a column without binding, and a warning for each statement.
    void expectTextWithoutBinding(const std::string& sqlType, std::uint32_t type,
                                  const std::string& expected)
    {
        bind(sqlType, type, nullptr);
        const std::string warning = warningLine("value nullptr in column x");
        const CoutCapture capture;
        EXPECT_EQ(m_table.getSqlInsertValues(), "INSERT INTO sample('x') VALUES(" + expected + ")")
            << sqlType << " " << type;
        EXPECT_EQ(capture.text(), warning);
        EXPECT_EQ(m_table.getSqlUpdateValues(), "UPDATE sample SET 'x'=" + expected)
            << sqlType << " " << type;
        EXPECT_EQ(capture.text(), warning + warning);
    }

    OwnKindsTbl m_table;
};

TEST_F(SqlTblValueTexts, TextOfEveryBuiltInKindIsTheQuotedString)
{
    for (const std::uint32_t type : {1U, 2U, 3U, 4U}) {
        expectText(VARCHAR, type, &m_table.record.text, "'a text'");
    }
}

TEST_F(SqlTblValueTexts, TextOfAnyOtherKindIsTheQuotedTextOfTheHook)
{
    for (const std::uint32_t type : KINDS_OF_THE_HOOK) {
        expectText(VARCHAR, type, &m_table.record.own, "'" + std::to_string(type) + "/own'");
    }
}

TEST_F(SqlTblValueTexts, TextWithoutBindingIsTheQuotedWordNull)
{
    for (const std::uint32_t type : ALL_KINDS) {
        expectTextWithoutBinding(VARCHAR, type, "'null'");
    }
}

TEST_F(SqlTblValueTexts, TextIsWrittenUnchanged)
{
    for (const std::string& text :
         {std::string(), std::string(" "), std::string("a,b"), std::string(","),
          std::string("ends with,"), std::string("it's"), std::string("'"), std::string("''"),
          std::string("\"\\;--\n\t"), std::string("\xC3\xA4\xFF"), std::string("a\0b", 3),
          std::string("null"), std::string(100000, 'x')}) {
        m_table.record.text = text;
        expectText(VARCHAR, 4, &m_table.record.text, "'" + text + "'");
    }
}

TEST_F(SqlTblValueTexts, NumberIsBareDecimal)
{
    expectText(INTEGER, 1, &m_table.record.wide, "18446744073709551615");
    expectText(INTEGER, 2, &m_table.record.number, "4294967295");
    expectText(INTEGER, 3, &m_table.record.narrow, "65535");

    m_table.record = Sample();
    expectText(INTEGER, 1, &m_table.record.wide, "0");
    expectText(INTEGER, 2, &m_table.record.number, "0");
    expectText(INTEGER, 3, &m_table.record.narrow, "0");
}

TEST_F(SqlTblValueTexts, StringInANumberColumnIsEmpty)
{
    expectText(INTEGER, 4, &m_table.record.text, "");
}

TEST_F(SqlTblValueTexts, NumberOfAnyOtherKindIsTheBareTextOfTheHook)
{
    for (const std::uint32_t type : KINDS_OF_THE_HOOK) {
        expectText(INTEGER, type, &m_table.record.own, std::to_string(type) + "/own");
    }
}

TEST_F(SqlTblValueTexts, NumberWithoutBindingIsZero)
{
    for (const std::uint32_t type : ALL_KINDS) {
        expectTextWithoutBinding(INTEGER, type, "0");
    }
}

TEST_F(SqlTblValueTexts, ColumnOfAnyOtherSqlTypeIsEmpty)
{
    const std::string nul(1, '\0');
    for (const std::string& sqlType :
         std::vector<std::string>{"",
                                  " ",
                                  "TEXT",
                                  "REAL",
                                  "varchar",
                                  "Varchar",
                                  "VARCHAR ",
                                  " VARCHAR",
                                  "VARCHAR(20)",
                                  "integer",
                                  "Integer",
                                  "INTEGER ",
                                  " INTEGER",
                                  "INT",
                                  "INTEGER NOT NULL",
                                  "INTEGER PRIMARY KEY",
                                  "INTEGER PRIMARY KEY AUTOINCREMENT",
                                  "integer primary key autoincrement not null",
                                  "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL ",
                                  "INTEGER  PRIMARY KEY AUTOINCREMENT NOT NULL",
                                  VARCHAR + nul,
                                  INTEGER + nul,
                                  KEY + nul}) {
        for (const std::uint32_t type : ALL_KINDS) {
            expectText(sqlType, type, &m_table.record.own, "");
            expectTextWithoutBinding(sqlType, type, "");
        }
    }
}

TEST_F(SqlTblValueTexts, KeyIsNullInAnInsertWhateverItsField)
{
    for (const std::uint32_t type : ALL_KINDS) {
        bind(KEY, type, &m_table.record.own);
        EXPECT_EQ(m_table.getSqlInsertValues(), "INSERT INTO sample('x') VALUES(null)");
    }
}

TEST(SqlTblValueTextsWithoutHook, OwnKindReadsNa)
{
    SampleTbl table;
    for (const std::uint32_t type : KINDS_OF_THE_HOOK) {
        const auto valueType = static_cast<SampleTbl::columnValueType_t>(type);
        table.columns = {{"text", VARCHAR, valueType, &table.record.own},
                         {"number", INTEGER, valueType, &table.record.own}};
        EXPECT_EQ(table.getSqlInsertValues(),
                  "INSERT INTO sample('text','number') VALUES('n/a',n/a)");
        EXPECT_EQ(table.getSqlUpdateValues(), "UPDATE sample SET 'text'='n/a','number'=n/a");
    }
}

}  // namespace
