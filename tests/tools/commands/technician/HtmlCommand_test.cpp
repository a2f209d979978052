#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const char* const ROWS =
    "INSERT INTO fault_type_definition VALUES"
    "(12,'E<12>','error',7,3),(7,NULL,NULL,NULL,0),(100,'E100','info',0,0);"
    "INSERT INTO descriptions VALUES"
    "(1,12,1,'a & b','short','long\"','comment','x' || char(10) || 'y'),"
    "(2,12,10,'zehn','',NULL,'',''),(3,12,2,'z' || char(7),'','','',x'ff'),"
    "(4,55,2,'of no fault type','','','','')";

class Html : public testing::Test {
protected:
    void SetUp() override { m_zav.database(ROWS); }

    /// What a line of shell makes of the page.
    std::string page(const std::string& options, const std::string& filter) const
    {
        return m_zav
            .shell("cd " + m_zav.file("") + "; zav html faults.db " + options + " | " + filter)
            .output;
    }

    ZavCommand m_zav;
};

TEST_F(Html, WritesAllThereIsAsAPlainList)
{
    EXPECT_EQ(page("", "sed -n '/^<body>/,/^<.main>/p'"), R"(<body>
<header>
<h1>faults.db</h1>
<form role="search" hidden>
<label class="search">Search <input type="search" autocomplete="off"></label>
<fieldset><legend>Languages</legend>
<label><input type="checkbox" value="1" checked> 1</label>
<label><input type="checkbox" value="2" checked> 2</label>
<label><input type="checkbox" value="10" checked> 10</label>
</fieldset>
<label>Type <select>
<option value="">all</option>
<option value="=">none</option>
<option value="=error">error</option>
<option value="=info">info</option>
</select></label>
</form>
<p id="count" role="status"></p>
</header>
<main>
<article id="7" data-type="">
<h2><a href="#7">7</a> <bdi></bdi> <span class="facts"></span></h2>
</article>
<article id="12" data-type="error">
<h2><a href="#12">12</a> <bdi>E&lt;12&gt;</bdi> <span class="facts">error</span></h2>
<p class="facts">clears after cycle 3, bug 7</p>
<section data-language="1">
<h3><span>[1]</span> <bdi>a &amp; b</bdi></h3>
<p dir="auto">short</p>
<p dir="auto">long&quot;</p>
<dl>
<dt>Remedy</dt>
<dd dir="auto">x
y</dd>
<dt>Comment</dt>
<dd dir="auto">comment</dd>
</dl>
</section>
<section data-language="2">
<h3><span>[2]</span> <bdi>z)"
                                                          "\uFFFD"
                                                          R"(</bdi></h3>
<dl>
<dt>Remedy</dt>
<dd dir="auto">)"
                                                          "\uFFFD"
                                                          R"(</dd>
</dl>
</section>
<section data-language="10">
<h3><span>[10]</span> <bdi>zehn</bdi></h3>
</section>
</article>
<article id="55" data-type="">
<h2><a href="#55">55</a> <bdi></bdi> <span class="facts"></span></h2>
<section data-language="2">
<h3><span>[2]</span> <bdi>of no fault type</bdi></h3>
</section>
</article>
<article id="100" data-type="info">
<h2><a href="#100">100</a> <bdi>E100</bdi> <span class="facts">info</span></h2>
</article>
</main>
)");
}

TEST_F(Html, TakesLanguagesAndATitle)
{
    EXPECT_EQ(page("--language 10 --language 1 --title '<Press> & \"co\"'",
                   "grep -E '<title>|<h1>|^<label>.*checkbox|<section'"),
              "<title>&lt;Press&gt; &amp; &quot;co&quot;</title>\n"
              "<h1>&lt;Press&gt; &amp; &quot;co&quot;</h1>\n"
              "<label><input type=\"checkbox\" value=\"1\" checked> 1</label>\n"
              "<label><input type=\"checkbox\" value=\"10\" checked> 10</label>\n"
              "<section data-language=\"1\">\n"
              "<section data-language=\"10\">\n");
}

TEST_F(Html, RefusesALanguageWithoutTexts)
{
    const CommandResult result =
        m_zav.shell("cd " + m_zav.file("") + "; zav html faults.db --language 1 --language 9");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "zav: faults.db: no text has the language 9\n");
    EXPECT_EQ(result.status, 1);
}

TEST_F(Html, GivesEachFaultALinkOfItsOwn)
{
    runSql(m_zav.file("faults.db"),
           "DROP TABLE fault_type_definition;"
           "CREATE TABLE fault_type_definition(code,alias,type,bug,clear_after_cycle_nr);"
           "INSERT INTO fault_type_definition(code, alias) VALUES(5,'a'),(5,'b'),('x','c');"
           "DELETE FROM descriptions");
    EXPECT_EQ(page("", "grep -oE 'id=\"[x0-9-]+\"|#[x0-9-]+\"'"),
              "id=\"5\"\n#5\"\nid=\"5-2\"\n#5-2\"\nid=\"x\"\n#x\"\n");
}

TEST_F(Html, AllowsItsOneStyleAndItsOneScript)
{
    const std::string script =
        "python3 -c 'import base64, hashlib, re, sys; page = sys.stdin.read();"
        "digest = lambda text: base64.b64encode(hashlib.sha256(text.encode()).digest()).decode();"
        "print(re.search(\"Policy. content=.(.*).>\", page)[1]);"
        "print([digest(text) in page for name in (\"style\", \"script\") for text in "
        "re.findall(f\"<{name}>(.*?)</{name}>\", page, re.S)])'";
    const std::string said = page("", script);
    EXPECT_EQ(said.substr(0, said.find("sha256-") + 7), "default-src 'none'; style-src 'sha256-");
    EXPECT_EQ(said.substr(said.find('\n') + 1), "[True, True]\n");
}

TEST_F(Html, IsSmall)
{
    runSql(m_zav.file("faults.db"),
           "WITH RECURSIVE n(i) AS (SELECT 1000 UNION ALL SELECT i + 1 FROM n WHERE i < 1999) "
           "INSERT INTO fault_type_definition SELECT i, 'GATE_' || i, 'error', i, 3 FROM n;"
           "INSERT INTO descriptions(id_fault_type, id_language, name, short_description, "
           "description, comment, remedy) SELECT code, l.value, 'Gate ' || code || ' open', "
           "'Overcurrent', printf('The motor current was above %d A for %d ms.', code, code), "
           "'Reported as a warning on panel 2.', 'Check that the axis moves freely.' FROM "
           "fault_type_definition, json_each('[1,2,3]') l WHERE code >= 1000");
    EXPECT_LT(std::stoul(page("", "wc -c")), 3'000'000U);
}

TEST_F(Html, ReportsAMissingTable)
{
    runSql(m_zav.file("faults.db"), "DROP TABLE descriptions");
    const CommandResult result = m_zav.run("html " + m_zav.file("faults.db"));
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.status, 3);
}

}  // namespace
