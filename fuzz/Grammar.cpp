#include "Grammar.h"

#include <array>

#include "support/DatabaseMaker.h"

namespace {

/// Of queries and expressions in each other: SQLite's parser takes no more than some 30.
constexpr int DEEPEST = 7;

constexpr std::array COUNTS = {1, 2, 3, 4, 6, 10, 20, 60, 100, 190, 450, 900};

constexpr std::array OPERATORS = {" || ",   " + ",  " AND ", " OR ", " = ",
                                  " < ",    " - ",  " IS ",  " * ",  " LIKE ",
                                  " GLOB ", " -> ", " ->> ", " % ",  " BETWEEN 0 AND "};

constexpr std::array LITERALS = {"1",    "'a'",   "NULL", "'%a%_a'",           "x'00'",
                                 "9e99", "'[[]'", "-1",   "hex(zeroblob(99))", "\"x\""};

constexpr std::array FUNCTIONS = {"abs",    "hex",      "upper", "quote",  "trim",
                                  "length", "zeroblob", "json",  "typeof", "total"};

constexpr std::array FUNCTIONS_OF_TWO = {
    "instr", "trim",   "max",        "coalesce", "like",         "printf",   "substr",
    "glob",  "nullif", "json_array", "round",    "json_extract", "strftime", "char"};

constexpr std::array AGGREGATES = {"count", "max", "sum", "group_concat", "json_group_array"};

template <std::size_t SIZE>
const char* chooseFrom(Grammar& grammar, const std::array<const char*, SIZE>& texts)
{
    const auto choice = static_cast<std::size_t>(grammar.choose(SIZE));
    return texts.at(choice);
}

}  // namespace

int Grammar::choose(int choices)
{
    return hasEnded() ? 0 : *m_at++ % choices;
}

int Grammar::chooseCount()
{
    return COUNTS[static_cast<std::size_t>(choose(static_cast<int>(COUNTS.size())))];
}

std::string Grammar::select(int views)
{
    m_views = views;
    m_ctes = 0;
    return compound(0);
}

std::string Grammar::repeated(const std::string& text, const std::string& separator)
{
    return ::repeated(text, text.size() < 200 ? chooseCount() : 1 + choose(3), separator);
}

std::string Grammar::compound(int depth)
{
    std::string query;
    const int ctesBefore = m_ctes;
    if (depth < DEEPEST && choose(4) == 1) {
        query = choose(2) == 0 ? "WITH " : "WITH RECURSIVE ";
        for (int i = choose(4); i >= 0; --i) {
            const std::string cte = "w" + std::to_string(m_ctes);
            query += cte + "(x, y) AS (" + simpleSelect(depth + 1);
            if (choose(4) == 1) {
                query += " UNION ALL SELECT x + 1, y FROM " + cte;
                query += choose(2) == 0 ? " LIMIT 100" : "";
            }
            query += i > 0 ? "), " : ") ";
            ++m_ctes;
        }
    }
    query += simpleSelect(depth);
    static constexpr std::array OPERATIONS = {" UNION ALL ", " UNION ", " EXCEPT ", " INTERSECT "};
    while (choose(5) == 1) {
        query += chooseFrom(*this, OPERATIONS) + repeated(simpleSelect(depth + 1), " UNION ALL ");
    }
    m_ctes = ctesBefore;
    return query;
}

std::string Grammar::simpleSelect(int depth)
{
    static constexpr std::array JOINS = {
        ", ", " JOIN ", " LEFT JOIN ", " NATURAL JOIN ", " NATURAL FULL JOIN ", " CROSS JOIN "};
    if (choose(12) == 1) {
        return "SELECT column1 AS x, column2 AS y FROM (VALUES " + repeated("(1, 'a')", ", ") + ")";
    }
    std::string from = source(depth) + " a0";
    if (choose(16) == 1) {
        from += repeated(", t", "");
    }
    for (int i = 1; choose(4) == 1 && i < 9; ++i) {
        from += chooseFrom(*this, JOINS) + source(depth) + " a" + std::to_string(i);
    }
    const std::string row = "a0.";
    std::string query = choose(8) == 1 ? "SELECT DISTINCT " : "SELECT ";
    static constexpr std::array WINDOWS = {
        "", " OVER ()", " OVER (ORDER BY a0.x)",
        " OVER (PARTITION BY a0.y ORDER BY a0.x ROWS BETWEEN 3 PRECEDING AND 3 FOLLOWING)"};
    const bool isAggregate = choose(8) == 1;
    query += isAggregate ? std::string(chooseFrom(*this, AGGREGATES)) + "(" +
                               expression(row, depth + 1) + ")" + chooseFrom(*this, WINDOWS)
                         : expression(row, depth + 1);
    query += " AS x, " + expression(row, depth + 1) + " AS y FROM " + from;
    if (choose(3) == 1) {
        query += " WHERE " + expression(row, depth + 1);
    }
    if (isAggregate && choose(2) == 1) {
        query += " GROUP BY " + repeated("a0.y", ", ");
    }
    if (depth == 0 && choose(6) == 1) {
        query += " ORDER BY " + repeated("1", ", ");
    }
    if (depth == 0 && choose(6) == 1) {
        query += " LIMIT 100 OFFSET " + std::to_string(chooseCount());
    }
    return query;
}

std::string Grammar::source(int depth)
{
    switch (choose(depth < DEEPEST ? 8 : 4)) {
    case 1:
    case 2:
        return name();
    case 3:
        return m_ctes > 0 ? "w" + std::to_string(choose(m_ctes)) : name();
    case 4:
        return "(" + compound(depth + 1) + ")";
    case 5:
        return "(SELECT value AS x, key AS y FROM json_each('[[1],2]'))";
    case 6:
        return "g";
    default:
        return m_views > 0 ? "v" + std::to_string(m_views - 1) : "t";
    }
}

/// A view as a query may write it.
std::string Grammar::name()
{
    if (m_views == 0) {
        return "t";
    }
    static constexpr std::array WRITINGS = {"v#", "\"v#\"",  "[v#]",    "'v#'",
                                            "V#", "main.v#", "/*v*/v#", "\"v#\"--\n"};
    return numbered(chooseFrom(*this, WRITINGS), choose(m_views));
}

std::string Grammar::expression()
{
    m_views = 0;
    return expression("", DEEPEST - 2);
}

std::string Grammar::expression(const std::string& row, int depth)
{
    if (depth >= DEEPEST) {
        return row + (choose(2) == 0 ? "x" : "y");
    }
    const auto part = [&] { return expression(row, depth + 1); };
    switch (choose(16)) {
    case 1:
        return row + "y";
    case 2:
        return chooseFrom(*this, LITERALS);
    case 3:
    case 4:
        return "(" + part() + chooseFrom(*this, OPERATORS) + part() + ")";
    case 5:
        return "(" + repeated(part(), chooseFrom(*this, OPERATORS)) + ")";
    case 6:
    case 7:
        return call(row, depth);
    case 8:
        return "CASE " + part() + " WHEN " + part() + " THEN " + part() + " ELSE " + part() +
               " END";
    case 9:
        return "(" + part() + " IN (" + repeated(part(), ", ") + "))";
    case 10:
        return row.empty() ? "x" : "(SELECT x FROM " + source(depth + 1) + " LIMIT 1)";
    case 11:
        return row.empty() ? "y" : "EXISTS (" + compound(depth + 1) + ")";
    case 12:
        return row.empty() ? "x"
                           : "((" + part() + ", " + part() + ") IN (" + compound(depth + 1) + "))";
    case 13:
        return "CAST(" + part() + " AS TEXT)";
    case 14:
        return "NOT " + part();
    default:
        return row + "x";
    }
}

std::string Grammar::call(const std::string& row, int depth)
{
    const std::string first = expression(row, depth + 1);
    switch (choose(5)) {
    case 1:
        return std::string(chooseFrom(*this, FUNCTIONS_OF_TWO)) + "(" + first + ", " +
               expression(row, depth + 1) + ")";
    case 2:
        return "replace(" + first + ", " + expression(row, depth + 1) + ", 'aaaa')";
    case 3: {
        const std::string function = std::string(chooseFrom(*this, FUNCTIONS)) + "(";
        const int count = chooseCount() % 40;
        return ::repeated(function, count) + first + ::repeated(")", count);
    }
    case 4:
        return "printf('%" + std::to_string(chooseCount() * 20) + "s', " + first + ")";
    default:
        return std::string(chooseFrom(*this, FUNCTIONS)) + "(" + first + ")";
    }
}

std::string Grammar::columns()
{
    static constexpr std::array CONSTRAINTS = {"",        " STORED",   " VIRTUAL",
                                               " UNIQUE", " NOT NULL", " COLLATE nocase"};
    std::string text = "x, y";
    for (int i = choose(16); i > 0; --i) {
        const std::string column = "c" + std::to_string(i);
        const std::string below = i > 1 ? "c" + std::to_string(i - 1) : "x";
        switch (choose(4)) {
        case 1:
            text += ", " + column + " AS (" + expression() + ")" + chooseFrom(*this, CONSTRAINTS);
            break;
        case 2:
            text += ", " + column + " DEFAULT 'a' CHECK (" + expression() + ")";
            break;
        case 3:
            text += ", " + column + " DEFAULT " + quoted(repeated("a", ""));
            break;
        default:
            text += ", " + column + " AS (" + below + " || " + below + ")";
        }
    }
    return text;
}

std::string Grammar::module(int views)
{
    m_views = views;
    switch (choose(6)) {
    case 1:
        return "fts4(x, y)";
    case 2:
        return "fts5(x, y, content=" + quoted(name()) + ")";
    case 3:
        return "rtree(x, y, z)";
    case 4:
        return "fts5vocab(descriptions, row)";
    case 5:
        return "fts3(content=\"descriptions\", x, y)";
    default:
        return "fts4(content=\"" + std::string(views > 0 ? "v0" : "t") + "\", x, y)";
    }
}
