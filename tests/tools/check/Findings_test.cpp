#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

/// One fault type with its texts in one language, nothing surprising about them.
const std::string CLEAN =
    "INSERT INTO fault_type_definition VALUES(1,'a','b',0,0);"
    "INSERT INTO descriptions VALUES(1,1,1,'n','s','d','c','r');";

struct Case {
    std::string name;
    std::string sql;
    std::string findings;  ///< the lines, without the name of the file
};

std::ostream& operator<<(std::ostream& stream, const Case& row)
{
    return stream << row.name;
}

class Findings : public testing::TestWithParam<Case> {};

TEST_P(Findings, AreListed)
{
    const Case& row = GetParam();
    const ZavCommand zav;
    const std::string file = zav.database(CLEAN + row.sql);
    const std::string name = "s#^" + file + ": ##; ";
    const CommandResult result =
        zav.shell("zav check --all --fail-on note " + file + " >" + zav.file("lines") +
                  "; status=$?; sed -i '" + name + "$d' " + zav.file("lines") + "; exit $status");
    EXPECT_EQ(contentOf(zav.file("lines")), row.findings);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, row.findings.empty() ? 0 : 1);
}

/// Without types: what is stored stays as it is written.
const std::string TEXT_COLUMNS =
    "id,id_fault_type,id_language,name,short_description,description,comment,remedy";

std::string replaceFaultTable(const std::string& columns, const std::string& values)
{
    return "DROP TABLE fault_type_definition; CREATE TABLE fault_type_definition(" + columns +
           "); INSERT INTO fault_type_definition VALUES(" + values + ")";
}

std::string replaceTextTable(const std::string& columns, const std::string& values)
{
    return "DROP TABLE descriptions; CREATE TABLE descriptions(" + columns +
           "); CREATE INDEX i ON descriptions(id_fault_type);"
           "INSERT INTO descriptions VALUES(" +
           values + ")";
}

/// Adds the text of a fault type in a language, and nothing surprising.
std::string text(const std::string& id, const std::string& faultType, const std::string& language)
{
    return ";INSERT INTO descriptions VALUES(" + id + "," + faultType + "," + language + ",'n" +
           id + "','s" + id + "','d" + id + "','','');";
}

/// Adds fault types up to a code, each with a text in language 1.
std::string faultTypesUpTo(int code)
{
    const std::string codes =
        "WITH RECURSIVE codes(c) AS (SELECT 2 UNION ALL SELECT c+1 FROM codes "
        "WHERE c<" +
        std::to_string(code) + ") ";
    return codes + "INSERT INTO fault_type_definition SELECT c,'alias'||c,'b',0,0 FROM codes;" +
           codes + "INSERT INTO descriptions SELECT c,c,1,'n'||c,'s'||c,'d'||c,'','' FROM codes;";
}

/// Adds texts in language 2 for the codes from one on.
std::string secondLanguageFrom(int code)
{
    return "INSERT INTO descriptions SELECT "
           "1000+code,code,2,'2n'||code,'2s'||code,'2d'||code,'','' "
           "FROM fault_type_definition WHERE code>=" +
           std::to_string(code) + ";";
}

/// Adds a second language with texts, as SQL expressions, of which the first is for "name".
std::string translation(const std::string& name, const std::string& shortDescription,
                        const std::string& description, const std::string& remedy = "'x'")
{
    return "INSERT INTO descriptions VALUES(2,1,2," + name + "," + shortDescription + "," +
           description + ",''," + remedy + ");";
}

/// The remedy of the fault type in two languages.
std::string remedies(const std::string& first, const std::string& second)
{
    return "UPDATE descriptions SET remedy='" + first + "';" +
           translation("'n2'", "'s2'", "'d2'", "'" + second + "'");
}

/// Gives so many fault types one type, and so many another.
std::string types(int commonRows, const std::string& common, int otherRows,
                  const std::string& other)
{
    const std::string all = std::to_string(commonRows + otherRows);
    return faultTypesUpTo(commonRows + otherRows) + "UPDATE fault_type_definition SET type='" +
           common + "' WHERE code<=" + std::to_string(commonRows) +
           ";UPDATE fault_type_definition SET type='" + other + "' WHERE code BETWEEN " +
           std::to_string(commonRows + 1) + " AND " + all + ";";
}

const Case CASES[] = {
    {"Clean", "", ""},
    {"MissingTable", "DROP TABLE descriptions",
     "descriptions: error: there is no such table, and every query of it fails; create "
     "it as zav(1) shows [missing-table]\n"},
    {"BothTablesMissing", "DROP TABLE descriptions; DROP TABLE fault_type_definition",
     "fault_type_definition: error: there is no such table, and every query of it "
     "fails; create it as zav(1) shows [missing-table]\n"
     "descriptions: error: there is no such table, and every query of it fails; create "
     "it as zav(1) shows [missing-table]\n"},
    {"ViewInPlaceOfATable",
     "ALTER TABLE descriptions RENAME TO texts; CREATE VIEW descriptions AS SELECT * FROM texts",
     ""},
    {"TableInOtherLetters",
     "ALTER TABLE descriptions RENAME TO other; ALTER TABLE other RENAME TO Descriptions", ""},
    {"MissingTextColumn", "ALTER TABLE fault_type_definition DROP COLUMN type",
     "fault_type_definition, type: error: every record holds the text last read (at first an empty "
     "one); ALTER TABLE \"fault_type_definition\" ADD COLUMN "
     "\"type\" VARCHAR; [missing-column]\n"},
    {"MissingNumber", "ALTER TABLE descriptions DROP COLUMN id_language",
     "descriptions, id_language: error: every record holds the number last read (at first 0); "
     "ALTER TABLE \"descriptions\" ADD COLUMN \"id_language\" INTEGER; "
     "[missing-column]\n"},
    {"MissingCode", replaceFaultTable("alias,type,bug,clear_after_cycle_nr", "'a','b',0,0"),
     "fault_type_definition, code: error: every record holds the number last read (at first 0), "
     "and getFaultTypeDef() fails; make the table anew with its columns "
     "in this order: code, alias, type, bug, clear_after_cycle_nr [missing-column]\n"
     "fault_type_definition: error: \"alias, type, bug, clear_after_cycle_nr\": the "
     "columns stand in another order: once a query has returned rows, getFaultTypeDef() "
     "finds by \"alias\" instead of \"code\"; make the table anew with its columns in "
     "this order: code, alias, type, bug, clear_after_cycle_nr [column-order]\n"},
    {"OtherLetters", "ALTER TABLE fault_type_definition RENAME COLUMN alias TO Alias",
     "fault_type_definition, Alias: error: the library looks for \"alias\", so that every record "
     "holds the text last read (at first an empty one); "
     "ALTER TABLE \"fault_type_definition\" RENAME COLUMN \"Alias\" TO \"alias\"; [letter-case]\n"},
    {"OtherLettersOfTheKey", "ALTER TABLE fault_type_definition RENAME COLUMN code TO Code",
     "fault_type_definition, Code: error: the library looks for \"code\", so that every record "
     "holds the number last read (at first 0); "
     "ALTER TABLE \"fault_type_definition\" RENAME COLUMN \"Code\" TO \"code\"; [letter-case]\n"},
    {"ExtraColumnAtTheEnd", "ALTER TABLE fault_type_definition ADD COLUMN owner DEFAULT 'x'",
     "fault_type_definition, owner: note: the library skips it; keep it only if another "
     "program needs it [extra-column]\n"},
    {"OtherOrderThatChangesTheLookupOfFaults",
     replaceFaultTable("alias,code,type,bug,clear_after_cycle_nr", "'a',1,'b',0,0"),
     "fault_type_definition: error: \"alias, code, type, bug, clear_after_cycle_nr\": "
     "the columns stand in another order: once a query has returned rows, "
     "getFaultTypeDef() finds by \"alias\" instead of \"code\"; make the table anew "
     "with its columns in this order: code, alias, type, bug, clear_after_cycle_nr "
     "[column-order]\n"},
    {"OtherOrderThatChangesTheLookupOfTexts",
     replaceTextTable("id,id_language,id_fault_type,name,short_description,description,comment,"
                      "remedy",
                      "1,1,1,'n','s','d','c','r'"),
     "descriptions: error: \"id, id_language, id_fault_type, name, short_description, "
     "des...\": the columns stand in another order: once a query has returned rows, "
     "getDescriptionsByFC() finds by \"id_language\" instead of \"id_fault_type\"; make "
     "the table anew with its columns in this order: id, id_fault_type, id_language, "
     "name, short_description, description, comment, remedy [column-order]\n"},
    {"OtherOrderThatMakesTheLookupFail",
     replaceFaultTable("\"order\",code,alias,type,bug,clear_after_cycle_nr", "0,1,'a','b',0,0"),
     "fault_type_definition: error: \"order, code, alias, type, bug, "
     "clear_after_cycle_nr\": the columns stand in another order: once a query has "
     "returned rows, getFaultTypeDef() fails; make the table anew with its columns in "
     "this order: code, alias, type, bug, clear_after_cycle_nr [column-order]\n"
     "fault_type_definition, order: note: the library skips it; keep it only if another "
     "program needs it [extra-column]\n"},
    {"OtherOrderThatChangesNoLookup",
     replaceFaultTable("code,type,alias,bug,clear_after_cycle_nr", "1,'b','a',0,0"),
     "fault_type_definition: error: \"code, type, alias, bug, clear_after_cycle_nr\": "
     "the columns stand in another order: no lookup changes; make the table anew with "
     "its columns in this order: code, alias, type, bug, clear_after_cycle_nr "
     "[column-order]\n"},
    {"NumberTooLarge", "UPDATE fault_type_definition SET clear_after_cycle_nr=65536",
     "fault_type_definition code=1, clear_after_cycle_nr: error: 65536: reads as 0; "
     "write a whole number from 0 to 65535 [out-of-range]\n"},
    {"NumberBelowZero", "UPDATE fault_type_definition SET clear_after_cycle_nr=-1",
     "fault_type_definition code=1, clear_after_cycle_nr: error: -1: reads as 65535; "
     "write a whole number from 0 to 65535 [out-of-range]\n"},
    {"NumberFarBelowZero", "UPDATE fault_type_definition SET clear_after_cycle_nr=-70000",
     "fault_type_definition code=1, clear_after_cycle_nr: error: -70000: reads as 0; "
     "write a whole number from 0 to 65535 [out-of-range]\n"},
    {"LargestNumbers",
     "UPDATE fault_type_definition SET clear_after_cycle_nr=65535, bug=4294967295", ""},
    {"WideNumberTooLarge", "UPDATE fault_type_definition SET bug=4294967296",
     "fault_type_definition code=1, bug: error: 4294967296: reads as 0; write a whole "
     "number from 0 to 4294967295 [out-of-range]\n"},
    {"NumberBeyondAll", "UPDATE fault_type_definition SET bug=9e999",
     "fault_type_definition code=1, bug: error: Inf: reads as 0; write a whole number "
     "from 0 to 4294967295 [not-a-number]\n"},
    {"NotANumber", "UPDATE fault_type_definition SET clear_after_cycle_nr='three'",
     "fault_type_definition code=1, clear_after_cycle_nr: error: \"three\": reads as 0; "
     "write a whole number from 0 to 65535 [not-a-number]\n"},
    {"EmptyNumber", "UPDATE fault_type_definition SET clear_after_cycle_nr=''",
     "fault_type_definition code=1, clear_after_cycle_nr: error: \"\": reads as 0; "
     "write a whole number from 0 to 65535 [not-a-number]\n"},
    {"Fraction", "UPDATE fault_type_definition SET clear_after_cycle_nr=2.75",
     "fault_type_definition code=1, clear_after_cycle_nr: error: 2.75: reads as 2; "
     "write a whole number from 0 to 65535 [inexact-number]\n"},
    {"NumberWithUnit", "UPDATE fault_type_definition SET clear_after_cycle_nr='42 ms'",
     "fault_type_definition code=1, clear_after_cycle_nr: error: \"42 ms\": reads as "
     "42; write a whole number from 0 to 65535 [inexact-number]\n"},
    {"NumberAfterZeros",
     replaceFaultTable("code,alias,type,bug,clear_after_cycle_nr", "1,'a','b','00','007'"),
     "fault_type_definition code=1, bug: error: \"00\": reads as 0; write a whole "
     "number from 0 to 4294967295 [inexact-number]\n"
     "fault_type_definition code=1, clear_after_cycle_nr: error: \"007\": reads as 7; "
     "write a whole number from 0 to 65535 [inexact-number]\n"},
    {"NullNumber", "UPDATE descriptions SET id_language=NULL",
     "descriptions id=1, id_language: note: NULL: reads as 0, for what is not known; "
     "write the number once it is [null]\n"},
    {"NullText", "UPDATE descriptions SET remedy=NULL",
     "descriptions id=1, remedy: note: NULL: reads as \"n/a\", for what is not known or not there; "
     "write '' to show nothing [null]\n"},
    {"TextThatSaysNull", "UPDATE descriptions SET remedy='NULL'", ""},
    {"TextWithNul", "UPDATE descriptions SET remedy='ab' || char(0) || 'c'",
     "descriptions id=1, remedy: error: \"ab\\x00c\": reads as the 2 bytes before the "
     "NUL byte; remove the NUL byte [cut-text]\n"},
    {"TextWithNulAfterOneByte", "UPDATE descriptions SET remedy='a' || char(0)",
     "descriptions id=1, remedy: error: \"a\\x00\": reads as the 1 byte before the NUL "
     "byte; remove the NUL byte [cut-text]\n"},
    {"TextWithNulInFront", "UPDATE descriptions SET remedy=char(0)",
     "descriptions id=1, remedy: error: \"\\x00\": reads as the 0 bytes before the NUL "
     "byte; remove the NUL byte [cut-text]\n"},
    {"BytesInPlaceOfAText", "UPDATE descriptions SET remedy=x'61ff62'",
     "descriptions id=1, remedy: warning: x'61ff62': the bytes are delivered unchanged; store the "
     "text in UTF-8 [not-utf8]\n"},
    {"TextNotUtf8", "UPDATE descriptions SET remedy=CAST(x'fc' AS TEXT)",
     "descriptions id=1, remedy: warning: \"\xEF\xBF\xBD\": the bytes are delivered "
     "unchanged; store the text in UTF-8 [not-utf8]\n"},
    {"TextInUtf8", "UPDATE descriptions SET remedy='ü漢👍'", ""},
    {"ControlCharacter", "UPDATE descriptions SET remedy='ring' || char(7) || '!'",
     "descriptions id=1, remedy: warning: \"ring\\x07!\": holds the control character "
     "U+0007; remove it [control-character]\n"},
    {"ControlCharacterBeyondAscii", "UPDATE descriptions SET remedy='a' || char(155) || 'b'",
     "descriptions id=1, remedy: warning: \"a\\u009bb\": holds the control character "
     "U+009B; remove it [control-character]\n"},
    {"LineEndsAndTabulators",
     "UPDATE descriptions SET remedy='a' || char(10) || 'b' || char(13,10) || 'c' || char(9) || "
     "'d'",
     ""},
    {"Quote", "UPDATE descriptions SET remedy='it''s'",
     "descriptions id=1, remedy: note: \"it's\": delivered unchanged, but the library's "
     "statement texts break at the quote; double it there [quote]\n"},
    {"TypographicQuote", "UPDATE descriptions SET remedy='it’s'", ""},
    {"LongValueIsShortened",
     "UPDATE descriptions SET remedy='''' || replace(hex(zeroblob(30)),'0','ä') || 'b'",
     "descriptions id=1, remedy: note: "
     "\"'"
     "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3"
     "\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4"
     "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4...\": delivered unchanged, but the "
     "library's statement texts break at the quote; double it there [quote]\n"},
    {"SpaceInFront", "UPDATE descriptions SET name=' n'",
     "descriptions id=1, name: note: \" n\": begins or ends with white space; remove it "
     "[surrounding-space]\n"},
    {"SpaceBehind", "UPDATE descriptions SET comment='c' || char(10)",
     "descriptions id=1, comment: note: \"c\\x0a\": begins or ends with white space; "
     "remove it [surrounding-space]\n"},
    {"SpaceOfAnotherScript", "UPDATE fault_type_definition SET alias='a' || char(12288)",
     "fault_type_definition code=1, alias: note: \"a\xE3\x80\x80\": begins or ends with "
     "white space; remove it [surrounding-space]\n"},
    {"NothingButSpace", "UPDATE descriptions SET remedy=' '",
     "descriptions id=1, remedy: note: \" \": begins or ends with white space; remove "
     "it [surrounding-space]\n"},
    {"SpaceInside", "UPDATE descriptions SET remedy='a  b'", ""},
    {"EmptyName", "UPDATE descriptions SET name=''",
     "descriptions id=1, name: note: \"\": there is nothing to show; write a text "
     "[empty-text]\n"},
    {"EmptyDescription", "UPDATE descriptions SET description=''",
     "descriptions id=1, description: note: \"\": there is nothing to show; write a "
     "text [empty-text]\n"},
    {"EmptyTextsOfOtherColumns",
     "UPDATE descriptions SET short_description='', comment='', remedy='';"
     "UPDATE fault_type_definition SET alias='', type=''",
     ""},
    {"CodeBeyondTheLookup",
     "INSERT INTO fault_type_definition VALUES(65536,'','',0,0)" + text("2", "65536", "1"),
     "fault_type_definition code=65536, code: error: 65536: delivered with the whole "
     "table, but getFaultTypeDef() cannot ask for it; use codes up to 65535 "
     "[code-range]\n"
     "descriptions id=2, id_fault_type: error: 65536: reads as 0; write a whole number "
     "from 0 to 65535 [out-of-range]\n"
     "descriptions id=2, id_fault_type: error: 65536: there is no fault type 0; add it, "
     "or correct or delete the text [unknown-fault]\n"},
    {"LargestCode",
     "INSERT INTO fault_type_definition VALUES(65535,'','',0,0)" + text("2", "65535", "1"), ""},
    {"CodeBeyondTheField",
     "INSERT INTO fault_type_definition VALUES(4294967296,'','',0,0)" +
         text("2", "4294967296", "1"),
     "fault_type_definition code=4294967296, code: error: 4294967296: reads as 0; write "
     "a whole number from 0 to 4294967295 [out-of-range]\n"
     "descriptions id=2, id_fault_type: error: 4294967296: reads as 0; write a whole "
     "number from 0 to 65535 [out-of-range]\n"},
    {"UnknownFault", text("2", "9", "1"),
     "descriptions id=2, id_fault_type: error: 9: there is no fault type 9; add it, or "
     "correct or delete the text [unknown-fault]\n"},
    {"UnknownFaultByTheNumberThatIsDelivered", text("2", "'9 ms'", "1"),
     "descriptions id=2, id_fault_type: error: \"9 ms\": reads as 9, by which "
     "getDescriptionsByFC() does not find the row; write a whole number from 0 to 65535 "
     "[inexact-number]\n"
     "descriptions id=2, id_fault_type: error: \"9 ms\": there is no fault type 9; add "
     "it, or correct or delete the text [unknown-fault]\n"},
    {"FaultTypeAsAFraction", replaceTextTable(TEXT_COLUMNS, "1,1.0,1,'n','s','d','c','r'"),
     "descriptions id=1, id_fault_type: error: 1.0: reads as 1; write a whole number "
     "from 0 to 65535 [inexact-number]\n"},
    {"FaultTypeAfterABlank", replaceTextTable(TEXT_COLUMNS, "1,' 1',1,'n','s','d','c','r'"),
     "descriptions id=1, id_fault_type: error: \" 1\": reads as 1, by which "
     "getDescriptionsByFC() does not find the row; write a whole number from 0 to 65535 "
     "[inexact-number]\n"},
    {"FaultTypeWithLetters", "UPDATE descriptions SET id_fault_type='1abc'",
     "descriptions id=1, id_fault_type: error: \"1abc\": reads as 1, by which "
     "getDescriptionsByFC() does not find the row; write a whole number from 0 to 65535 "
     "[inexact-number]\n"},
    {"FaultTypeAsATextThatTheLookupDoesNotFind",
     replaceTextTable(TEXT_COLUMNS, "1,'1',1,'n','s','d','c','r'"),
     "descriptions id=1, id_fault_type: error: \"1\": reads as 1, by which "
     "getDescriptionsByFC() does not find the row; declare id_fault_type as INTEGER, "
     "and write a number rather than a text [inexact-number]\n"},
    {"FaultTypeAsATextThatTheLookupFinds", "UPDATE descriptions SET id_fault_type='1'", ""},
    {"NullFaultType", "UPDATE descriptions SET id_fault_type=NULL",
     "descriptions, id_language: warning: 1: 1 of 1 fault types have no text in this "
     "language: 1; add them [missing-language]\n"
     "descriptions id=1, id_fault_type: note: NULL: reads as 0, for what is not known; "
     "write the number once it is [null]\n"},
    {"FaultTypeThatIsNoNumber", "UPDATE descriptions SET id_fault_type='abc'",
     "descriptions id=1, id_fault_type: error: \"abc\": reads as 0; write a whole "
     "number from 0 to 65535 [not-a-number]\n"
     "descriptions id=1, id_fault_type: error: \"abc\": there is no fault type 0; add "
     "it, or correct or delete the text [unknown-fault]\n"
     "descriptions, id_language: warning: 1: 1 of 1 fault types have no text in this "
     "language: 1; add them [missing-language]\n"},
    {"FaultTypeThatIsNoNumberWhereThereIsFaultType0",
     "UPDATE fault_type_definition SET code=0; UPDATE descriptions SET id_fault_type='abc'",
     "descriptions id=1, id_fault_type: error: \"abc\": reads as 0; write a whole "
     "number from 0 to 65535 [not-a-number]\n"},
    {"CodeWithLetters",
     replaceFaultTable("code,alias,type,bug,clear_after_cycle_nr", "'1abc','a','b',0,0"),
     "fault_type_definition code='1abc', code: error: \"1abc\": reads as 1, by which "
     "getFaultTypeDef() does not find the row; write a whole number from 0 to "
     "4294967295 [inexact-number]\n"},
    {"DuplicateTextByTheNumbersThatAreDelivered",
     replaceTextTable(TEXT_COLUMNS, "1,1,1,'n','s','d','c','r'),(2,1.0,'1st','n','s','d','c','r'"),
     "descriptions id=2, id_fault_type: error: 1.0: reads as 1; write a whole number "
     "from 0 to 65535 [inexact-number]\n"
     "descriptions id=2, id_language: error: \"1st\": reads as 1; write a whole number "
     "from 0 to 65535 [inexact-number]\n"
     "descriptions id=2, id_language: warning: \"1st\": one more text in this language "
     "for fault type 1; keep one [duplicate-text]\n"},
    {"NoTextIsMissingByTheNumbersThatAreDelivered",
     "INSERT INTO fault_type_definition VALUES(2,'','',0,0);" +
         replaceTextTable(TEXT_COLUMNS,
                          "1,1,1,'n','s','d','c','r'),(2,'2nd','1st','n','s','d','c','r'"),
     "descriptions id=2, id_fault_type: error: \"2nd\": reads as 2, by which "
     "getDescriptionsByFC() does not find the row; write a whole number from 0 to 65535 "
     "[inexact-number]\n"
     "descriptions id=2, id_language: error: \"1st\": reads as 1; write a whole number "
     "from 0 to 65535 [inexact-number]\n"},
    {"AQuarterOfTheTextsMissing", faultTypesUpTo(8) + secondLanguageFrom(3),
     "descriptions id_fault_type=1, id_language: warning: 2: the fault type has no text "
     "in this language; add it [missing-text]\n"
     "descriptions id_fault_type=2, id_language: warning: 2: the fault type has no text "
     "in this language; add it [missing-text]\n"},
    {"MoreThanAQuarterOfTheTextsMissing", faultTypesUpTo(8) + secondLanguageFrom(4),
     "descriptions, id_language: warning: 2: 3 of 8 fault types have no text in this "
     "language: 1, 2, 3; add them [missing-language]\n"},
    {"MostTextsMissing", faultTypesUpTo(8) + secondLanguageFrom(8),
     "descriptions, id_language: warning: 2: 7 of 8 fault types have no text in this "
     "language: 1, 2, 3, ...; add them [missing-language]\n"},
    {"LanguageWhoseTextsAreOfNoKnownFault",
     "INSERT INTO descriptions VALUES(2,9,3,'n2','s','d','',''),(3,NULL,4,'n3','s','d','','')",
     "descriptions id=2, id_fault_type: error: 9: there is no fault type 9; add it, or "
     "correct or delete the text [unknown-fault]\n"
     "descriptions, id_language: warning: 3: 1 of 1 fault types have no text in this "
     "language: 1; add them [missing-language]\n"
     "descriptions, id_language: warning: 4: 1 of 1 fault types have no text in this "
     "language: 1; add them [missing-language]\n"
     "descriptions id=3, id_fault_type: note: NULL: reads as 0, for what is not known; "
     "write the number once it is [null]\n"},
    {"NoTextMissing", faultTypesUpTo(8) + secondLanguageFrom(1), ""},
    {"FaultTypesWithoutAnyText", "DELETE FROM descriptions", ""},
    {"DuplicateText", text("2", "1", "1"),
     "descriptions id=2, id_language: warning: 1: one more text in this language for "
     "fault type 1; keep one [duplicate-text]\n"},
    {"TextInAnotherLanguage", text("2", "1", "2"), ""},
    {"DuplicateCode",
     replaceFaultTable("code,alias,type,bug,clear_after_cycle_nr", "1,'a','b',0,0),(1,'c','',0,0"),
     "fault_type_definition code=1, code: error: 1: 2 rows have it, and "
     "getFaultTypeDef() finds none of them; keep one, and declare code as INTEGER "
     "PRIMARY KEY AUTOINCREMENT NOT NULL [duplicate-code]\n"},
    {"DuplicateId",
     replaceTextTable(TEXT_COLUMNS, "1,1,1,'n','s','d','c','r'),(1,1,2,'n2','','d','',''"),
     "descriptions id=1, id: error: 1: 2 rows have it; keep one, and declare id as "
     "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL [duplicate-id]\n"},
    {"DuplicateIdThatIsNoNumber",
     replaceTextTable(TEXT_COLUMNS, "'x',1,1,'n','s','d','c','r'),('x',1,2,'n2','','d','',''"),
     "descriptions id='x', id: error: \"x\": reads as 0; write a whole number from 0 to "
     "65535 [not-a-number]\n"
     "descriptions id='x', id: error: \"x\": reads as 0; write a whole number from 0 to "
     "65535 [not-a-number]\n"
     "descriptions id='x', id: error: \"x\": 2 rows have it; keep one, and declare id "
     "as INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL [duplicate-id]\n"},
    {"KeyThatIsNoNumber",
     replaceTextTable(TEXT_COLUMNS, "'o''ne',1,1,'n','s','d','c','r'),(NULL,1,2,'n2','','d','',''"),
     "descriptions id='o''ne', id: error: \"o'ne\": reads as 0; write a whole number "
     "from 0 to 65535 [not-a-number]\n"
     "descriptions row 2, id: note: NULL: reads as 0, for what is not known; write the "
     "number once it is [null]\n"},
    {"DuplicateAlias",
     faultTypesUpTo(3) + "UPDATE fault_type_definition SET alias='A' WHERE code>1",
     "fault_type_definition code=3, alias: warning: \"A\": the alias of code=2, too; "
     "give each its own [duplicate-alias]\n"},
    {"AliasInOtherLetters",
     faultTypesUpTo(2) + "UPDATE fault_type_definition SET alias='A' "
                         "WHERE code=2",
     ""},
    {"NoAliases", faultTypesUpTo(3) + "UPDATE fault_type_definition SET alias=''", ""},
    {"SameText", translation("'n'", "'s'", "'d'"),
     "descriptions id=2: warning: name, short description and description are those of "
     "language 1; translate them [same-text]\n"},
    {"SameTextInThreeLanguages",
     translation("'n'", "'s'", "'d'") + "INSERT INTO descriptions VALUES(3,1,3,'n','s','d','','')",
     "descriptions id=2: warning: name, short description and description are those of "
     "language 1; translate them [same-text]\n"
     "descriptions id=3: warning: name, short description and description are those of "
     "language 1; translate them [same-text]\n"},
    {"SameTextOfAnotherFaultType",
     "INSERT INTO fault_type_definition VALUES(2,'','',0,0);"
     "INSERT INTO descriptions VALUES(2,2,1,'n','s','d','','')",
     ""},
    {"SameTextButForOneLetter", translation("'n'", "'s'", "'D'"), ""},
    {"SameTextButForItsParts", translation("'ns'", "''", "'d'"), ""},
    {"SameTextWithAnEmptyOne",
     "UPDATE descriptions SET short_description='';" + translation("'n'", "''", "'d'"), ""},
    {"SameTextWithANull",
     "UPDATE descriptions SET short_description=NULL;" + translation("'n'", "NULL", "'d'"),
     "descriptions id=1, short_description: note: NULL: reads as \"n/a\", for what is "
     "not known or not there; write '' to show nothing [null]\n"
     "descriptions id=2, short_description: note: NULL: reads as \"n/a\", for what is "
     "not known or not there; write '' to show nothing [null]\n"},
    {"PlaceholderMissing", remedies("wait %d s", "warten"),
     "descriptions id=2, remedy: warning: \"warten\": has no placeholder, but language "
     "1 has %d; use the same [placeholder-mismatch]\n"},
    {"PlaceholderOfAnotherKind", remedies("wait %d s", "%s s warten"),
     "descriptions id=2, remedy: warning: \"%s s warten\": has %s, but language 1 has "
     "%d; use the same [placeholder-mismatch]\n"},
    {"PlaceholderTwice", remedies("%s and %s", "%s"),
     "descriptions id=2, remedy: warning: \"%s\": has %s, but language 1 has %s %s; use "
     "the same [placeholder-mismatch]\n"},
    {"PlaceholderOfMostLanguages",
     remedies("wait %s", "%d warten") +
         "INSERT INTO descriptions VALUES(3,1,3,'n3','s3','d3','','%d')",
     "descriptions id=1, remedy: warning: \"wait %s\": has %s, but language 2 has %d; "
     "use the same [placeholder-mismatch]\n"},
    {"PlaceholderOfQt", remedies("%1 of %99", "%1 von %98"),
     "descriptions id=2, remedy: warning: \"%1 von %98\": has %1 %98, but language 1 "
     "has %1 %99; use the same [placeholder-mismatch]\n"},
    {"PlaceholderInBraces", remedies("{0}, {name}", "{1}, {Name}"),
     "descriptions id=2, remedy: warning: \"{1}, {Name}\": has {1} {Name}, but language "
     "1 has {0} {name}; use the same [placeholder-mismatch]\n"},
    {"PlaceholderWithPosition", remedies("%1$s: %2$-5.2f", "%2$s: %1$-5.2f"),
     "descriptions id=2, remedy: warning: \"%2$s: %1$-5.2f\": has %1$-5.2f %2$s, but "
     "language 1 has %1$s %2$-5.2f; use the same [placeholder-mismatch]\n"},
    {"PlaceholdersInAnotherOrder", remedies("%1$s %d {0} %2 %lu %*d", "%*d %lu %2 {0} %d %1$s"),
     ""},
    {"NoPlaceholders", remedies("10 % of {} {a b} {0a} %% %0 { }", "100 %: 5 %%d {-} %_"), ""},
    {"PlaceholderWhereThereIsNoOtherText", remedies("wait %d s", ""), ""},
    {"RareType", types(10, "error", 2, "eror"),
     "fault_type_definition code=11, type: note: \"eror\": 10 fault types are "
     "\"error\"; correct it if that is meant [rare-type]\n"
     "fault_type_definition code=12, type: note: \"eror\": 10 fault types are "
     "\"error\"; correct it if that is meant [rare-type]\n"},
    {"RareTypeWithASwapAndAnotherEdit", types(10, "warning", 1, "wraningg"),
     "fault_type_definition code=11, type: note: \"wraningg\": 10 fault types are "
     "\"warning\"; correct it if that is meant [rare-type]\n"},
    {"RareTypeOfThreeEdits", types(10, "error", 2, "er"), ""},
    {"TypeOfThreeRows", types(10, "error", 3, "eror"), ""},
    {"TypeLikeOneOfNineRows", types(9, "error", 2, "eror"), ""},
    {"MoreTypesThanAnybodyAgreesOn",
     types(10, "error", 1, "eror") +
         "WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i+1 FROM n WHERE i<1100) "
         "INSERT INTO fault_type_definition SELECT i,'','type'||i,0,0 FROM n;"
         "INSERT INTO descriptions SELECT code,code,1,'n','s','d','','' "
         "FROM fault_type_definition WHERE code>=100",
     ""},
    {"ViewInPlaceOfFaultTypes",
     "ALTER TABLE fault_type_definition RENAME TO types;"
     "CREATE VIEW fault_type_definition AS SELECT * FROM types",
     ""},
    {"MissingIndex", "DROP INDEX descriptions_id_fault_type",
     "descriptions, id_fault_type: warning: getDescriptionsByFC() reads the whole "
     "table; CREATE INDEX \"descriptions_id_fault_type\" ON \"descriptions\" "
     "(\"id_fault_type\"); [missing-index]\n"},
    {"IndexOfMoreColumns",
     "DROP INDEX descriptions_id_fault_type;"
     "CREATE INDEX i ON descriptions(id_fault_type, id_language)",
     ""},
    {"IndexThatDoesNotHelp",
     "DROP INDEX descriptions_id_fault_type;"
     "CREATE INDEX i ON descriptions(id_language, id_fault_type)",
     "descriptions, id_fault_type: warning: getDescriptionsByFC() reads the whole "
     "table; CREATE INDEX \"descriptions_id_fault_type\" ON \"descriptions\" "
     "(\"id_fault_type\"); [missing-index]\n"},
};

INSTANTIATE_TEST_SUITE_P(Check, Findings, testing::ValuesIn(CASES),
                         [](const auto& suite) { return suite.param.name; });

}  // namespace
