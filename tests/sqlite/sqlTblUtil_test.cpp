#include "zav/sqlTblUtil.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iomanip>
#include <iostream>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include "support/CoutCapture.h"
#include "support/CoutRedirect.h"
#include "support/FailingCout.h"
#include "support/GlobalLocale.h"
#include "support/LockProbe.h"
#include "support/reporterLines.h"
#include "zav/detail/tableParts.h"

namespace {

TEST(SqlTblUtilReporters, ErrorIsOneWholeLineThatIsFlushed)
{
    LockProbe probe;
    const CoutRedirect redirect(probe);
    sqlTblUtil::printError("the message");
    EXPECT_EQ(probe.flushedText(), "[ERROR] SQL3::printError() the message\n");
    EXPECT_EQ(probe.flushes(), 1);
}

TEST(SqlTblUtilReporters, WarningIsOneWholeLineThatIsFlushed)
{
    LockProbe probe;
    const CoutRedirect redirect(probe);
    sqlTblUtil::printWarning("the message");
    EXPECT_EQ(probe.flushedText(), "[WARNING] SQL3::printWarning() the message\n");
    EXPECT_EQ(probe.flushes(), 1);
}

TEST(SqlTblUtilReporters, MessageIsWrittenAsItIs)
{
    for (const std::string& message :
         {std::string(), std::string("100 %s %n"), std::string("\"a\"\nb\xFF"),
          std::string("a\0b", 3), std::string(100000, 'x')}) {
        const CoutCapture capture;
        sqlTblUtil::printError(message);
        sqlTblUtil::printWarning(message);
        EXPECT_EQ(capture.text(), errorLine(message) + warningLine(message));
    }
}

TEST(SqlTblUtilReporters, FormatThatTheApplicationHasSetDoesNotCount)
{
    const CoutCapture capture;
    std::ios formatBefore(nullptr);
    formatBefore.copyfmt(std::cout);
    std::cout << std::setfill('*') << std::right << std::setw(40);
    sqlTblUtil::printError("message");
    std::cout << std::setw(40);
    sqlTblUtil::printWarning("message");
    std::cout.copyfmt(formatBefore);
    EXPECT_EQ(capture.text(), errorLine("message") + warningLine("message"));
}

TEST(SqlTblUtilReporters, ExceptionOfTheStreamPassesThroughAndFreesTheLock)
{
    {
        const FailingCout failing;
        EXPECT_THROW(sqlTblUtil::printError("message"), FailingCout::WriteFailure);
    }
    {
        const FailingCout failing;
        EXPECT_THROW(sqlTblUtil::printWarning("message"), FailingCout::WriteFailure);
    }
    const CoutCapture capture;
    sqlTblUtil::printError("message");
    EXPECT_EQ(capture.text(), "[ERROR] SQL3::printError() message\n");
}

TEST(SqlTblUtilNumberText, IsUnsignedDecimal)
{
    EXPECT_EQ(sqlTblUtil::numberText(0), "0");
    EXPECT_EQ(sqlTblUtil::numberText(65535), "65535");
    EXPECT_EQ(sqlTblUtil::numberText(4294967295), "4294967295");
    EXPECT_EQ(sqlTblUtil::numberText(18446744073709551615U), "18446744073709551615");
}

TEST(SqlTblUtilNumberText, IsGroupedOnlyWhereTheGlobalLocaleGroups)
{
    const GlobalLocale global(groupingLocale());
    EXPECT_EQ(sqlTblUtil::numberText(4294967295), "4.294.967.295");
}

TEST(SqlTblUtilEraseLastSeparator, ErasesTheLastCommaAndAllBehindIt)
{
    const struct {
        std::string list;
        std::string expected;
    } cases[] = {{"a,", "a"}, {"a,b,", "a,b"}, {"'a,b',", "'a,b'"}, {",", ""},
                 {",,", ","}, {"a,b", "a"},    {"a,'b' ", "a"}};
    for (const auto& [list, expected] : cases) {
        std::string text = list;
        sqlTblUtil::eraseLastSeparator(text);
        EXPECT_EQ(text, expected);
    }
}

TEST(SqlTblUtilEraseLastSeparator, ThrowsWithoutAComma)
{
    for (const std::string& list : {std::string(), std::string("no comma")}) {
        std::string text = list;
        try {
            sqlTblUtil::eraseLastSeparator(text);
            ADD_FAILURE() << "no exception";
        } catch (const std::out_of_range& exception) {
            EXPECT_STREQ(exception.what(), "basic_string::erase");
            EXPECT_EQ(typeid(exception), typeid(std::out_of_range));
        }
        EXPECT_EQ(text, list);
    }
}

template <class T>
class SetValueFromSqlResult : public testing::Test {
protected:
    /// @return what the decoder returns for a cell with this text.
    int decode(const std::string& text)
    {
        std::string cellText = text;
        char* cell = cellText.data();
        return sqlTblUtil::setValueFromSqlResult(&cell, &m_value);
    }

    /// Expects what a stream makes of the text, and the whole error line where it makes nothing.
    void expectAsFromAStream(const std::string& text, const std::string& typeName)
    {
        m_value = OLD;
        const CoutCapture capture;
        const int result = decode(text);

        std::istringstream stream(text);
        T expected = 0;
        if (stream >> expected) {
            EXPECT_EQ(result, 0) << text;
            EXPECT_EQ(m_value, expected) << text;
            EXPECT_EQ(capture.text(), "") << text;
        } else {
            EXPECT_EQ(result, -1) << text;
            EXPECT_EQ(m_value, OLD) << text;
            EXPECT_EQ(capture.text(),
                      errorLine("casting value \"" + text + "\", typeid=" + typeName));
        }
    }

    static constexpr T OLD = 12345;
    T m_value = OLD;
};

template <class T>
const char* const TYPE_NAME = nullptr;
template <>
const char* const TYPE_NAME<unsigned short> = "t";
template <>
const char* const TYPE_NAME<unsigned int> = "j";
template <>
const char* const TYPE_NAME<unsigned long long> = "y";

using Numbers = testing::Types<unsigned short, unsigned int, unsigned long long>;
TYPED_TEST_SUITE(SetValueFromSqlResult, Numbers, );

TYPED_TEST(SetValueFromSqlResult, OddTextsAreReadAsAStreamReadsThem)
{
    for (const char* text : {"42",
                             "0",
                             "00042",
                             "+5",
                             "-0",
                             "-1",
                             "-5",
                             "-65535",
                             "-65536",
                             "-70000",
                             "42abc",
                             "42 abc",
                             "42.9",
                             "1e3",
                             "4,2",
                             "0x10",
                             "010",
                             " 42",
                             "\t42",
                             "\n42",
                             "\r\n42",
                             "\v\f42",
                             "42 ",
                             "42\n",
                             "",
                             " ",
                             "\t\n",
                             "abc",
                             "n/a",
                             "+",
                             "-",
                             "--1",
                             "+-1",
                             "- 1",
                             "'42'",
                             "\"42\"",
                             ".5",
                             "true",
                             "inf",
                             "nan",
                             "65535",
                             "65536",
                             "70000",
                             "99999",
                             "\xC2\xA0 42",
                             "\xD9\xA4\xD9\xA2"}) {
        this->expectAsFromAStream(text, TYPE_NAME<TypeParam>);
    }
}

TYPED_TEST(SetValueFromSqlResult, TextsAroundEveryLimitAreReadAsAStreamReadsThem)
{
    for (const char* text :
         {"2147483647", "2147483648", "-2147483648", "4294967295", "4294967296", "-4294967295",
          "-4294967296", "9223372036854775807", "9223372036854775808", "-9223372036854775808",
          "18446744073709551615", "18446744073709551616", "-18446744073709551615",
          "-18446744073709551616", "99999999999999999999999999999999",
          "00000000000000000000000000000042"}) {
        this->expectAsFromAStream(text, TYPE_NAME<TypeParam>);
    }
}

TYPED_TEST(SetValueFromSqlResult, DigitsOfEveryLengthAreReadAsAStreamReadsThem)
{
    const char* const typeName = TYPE_NAME<TypeParam>;
    for (const char first : {'0', '1', '5', '9'}) {
        for (std::size_t length = 1; length <= 25; ++length) {
            std::string digits(length, '9');
            digits[0] = first;
            this->expectAsFromAStream(digits, typeName);
            this->expectAsFromAStream(digits + "/", typeName);
            this->expectAsFromAStream(digits + ":", typeName);
            this->expectAsFromAStream("/" + digits, typeName);
            this->expectAsFromAStream(" " + digits, typeName);
            const GlobalLocale global(groupingLocale());
            this->expectAsFromAStream(digits, typeName);
        }
    }
}

TYPED_TEST(SetValueFromSqlResult, GroupedTextsAreReadAsAStreamReadsThem)
{
    const GlobalLocale global(groupingLocale());
    for (const char* text : {"1234", "1.234", "12.34", "4.294.967.295", "1.2345"}) {
        this->expectAsFromAStream(text, TYPE_NAME<TypeParam>);
    }
}

TYPED_TEST(SetValueFromSqlResult, LargestValueFits)
{
    const TypeParam largest = std::numeric_limits<TypeParam>::max();
    EXPECT_EQ(this->decode(std::to_string(largest)), 0);
    EXPECT_EQ(this->m_value, largest);
}

TYPED_TEST(SetValueFromSqlResult, TextBehindTheDigitsIsNotExamined)
{
    const CoutCapture capture;
    for (const char* text : {"42", " 42", "42abc"}) {
        this->m_value = this->OLD;
        EXPECT_EQ(this->decode(text), 0);
        EXPECT_EQ(this->m_value, 42U);
    }
    EXPECT_EQ(capture.text(), "");
}

TYPED_TEST(SetValueFromSqlResult, MinusOneIsTheLargestValue)
{
    EXPECT_EQ(this->decode("-1"), 0);
    EXPECT_EQ(this->m_value, std::numeric_limits<TypeParam>::max());
}

TYPED_TEST(SetValueFromSqlResult, EmptyTextIsReported)
{
    const CoutCapture capture;
    EXPECT_EQ(this->decode(""), -1);
    EXPECT_EQ(this->m_value, this->OLD);
    EXPECT_EQ(capture.text(),
              errorLine(std::string("casting value \"\", typeid=") + TYPE_NAME<TypeParam>));
}

TYPED_TEST(SetValueFromSqlResult, NullCellIsNeitherWrittenNorReported)
{
    const CoutCapture capture;
    char* cell = nullptr;
    EXPECT_EQ(sqlTblUtil::setValueFromSqlResult(&cell, &this->m_value), -1);
    EXPECT_EQ(this->m_value, this->OLD);
    EXPECT_EQ(capture.text(), "");
}

TYPED_TEST(SetValueFromSqlResult, CellIsLeftAsItWas)
{
    std::string text = " 42abc";
    char* cell = text.data();
    EXPECT_EQ(sqlTblUtil::setValueFromSqlResult(&cell, &this->m_value), 0);
    EXPECT_EQ(cell, text.data());
    EXPECT_EQ(text, " 42abc");
}

TEST(SetValueFromSqlResultByWidth, SeventyThousandFits32BitsButNot16)
{
    std::string text = "70000";
    char* cell = text.data();
    unsigned int wide = 0;
    EXPECT_EQ(sqlTblUtil::setValueFromSqlResult(&cell, &wide), 0);
    EXPECT_EQ(wide, 70000U);

    const CoutCapture capture;
    unsigned short narrow = 1;
    EXPECT_EQ(sqlTblUtil::setValueFromSqlResult(&cell, &narrow), -1);
    EXPECT_EQ(narrow, 1U);
    EXPECT_EQ(capture.text(), errorLine("casting value \"70000\", typeid=t"));
}

TEST(SetValueFromSqlResultByWidth, Largest64BitValueFits64BitsButNot32)
{
    std::string text = "18446744073709551615";
    char* cell = text.data();
    unsigned long long wide = 0;
    EXPECT_EQ(sqlTblUtil::setValueFromSqlResult(&cell, &wide), 0);
    EXPECT_EQ(wide, 18446744073709551615U);

    const CoutCapture capture;
    unsigned int narrow = 1;
    EXPECT_EQ(sqlTblUtil::setValueFromSqlResult(&cell, &narrow), -1);
    EXPECT_EQ(narrow, 1U);
    EXPECT_EQ(capture.text(), errorLine("casting value \"18446744073709551615\", typeid=j"));
}

}  // namespace
