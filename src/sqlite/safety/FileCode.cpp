#include "FileCode.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

/// Nodes of up to 600 bytes each, which makes 60 MB.
constexpr std::uint32_t MOST_NODES = 100000;

/// One for the query, the others for views, common table expressions and generated columns that
/// build on each other.
constexpr std::uint32_t MOST_LEVELS = 17;

/// Tokens and pieces looked at, which takes a tenth of a second.
constexpr std::uint32_t MOST_WORK = 1000000;

/// Terms of a compound query. SQLite itself allows some 500.
constexpr std::uint32_t MOST_TERMS = 1000;

/// Parentheses within each other. SQLite's parser takes no more than 100.
constexpr int MOST_SCOPES = 102;

// Measured on x86-64 with SQLite 3.40, and rounded up; a 32-bit machine needs less.
constexpr std::uint32_t STACK_OF_LEVEL = 600;
constexpr std::uint32_t STACK_OF_SUBQUERY = 1600;  ///< in an expression: more than a level
constexpr std::uint32_t STACK_OF_COMPOUND_TERM = 550;
constexpr std::uint32_t STACK_OF_OPERATOR = 420;
constexpr std::uint32_t STACK_OF_JOIN = 500;
constexpr std::uint32_t STACK_OF_WINDOW = 600;
constexpr std::uint32_t STACK_OF_JSON = 150 * 1024;  ///< of its deepest nesting, 2000

/// Words between which an expression stands. None can be a name without quotes.
constexpr const char* AROUND_EXPRESSIONS =
    " select from where group order having limit on using join as values distinct all create table "
    "when then else ";

/// Words that may make an expression deeper. None can be a name without quotes.
constexpr const char* OPERATORS =
    " and or not is in between case collate isnull notnull exists escape ";

/// Bytes that a query of one table by one column has at the most. A query that could do harm is
/// longer, or calls a function.
constexpr int LONGEST_PLAIN_QUERY = 100;

/// Begins the name of a table that tells what a pragma does.
constexpr char PRAGMA[] = "pragma_";

/// SQLite refuses its JSON functions in a schema, but not these tables.
constexpr const char* JSON_TABLES = " json_each json_tree ";

constexpr const char* QUERY_WORDS = " select with values ";

std::uint32_t cappedNodes(std::uint64_t nodes)
{
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(nodes, MOST_NODES + 1));
}

/// How often each name occurs, or a little more, since names share their counters.
class NameCounts {
public:
    void add(const SqlToken& name)
    {
        std::uint32_t hash = 0;
        for (std::size_t i = 0; i < name.length; ++i) {
            hash = hash * 31 + (static_cast<unsigned char>(name.text[i]) | 0x20U);
        }
        ++m_counts[hash % COUNTERS];
    }

    void add(const NameCounts& other)
    {
        for (int i = 0; i < COUNTERS; ++i) {
            m_counts[i] += other.m_counts[i];
        }
    }

    std::uint32_t highestCount() const { return *std::max_element(m_counts, m_counts + COUNTERS); }

private:
    static constexpr int COUNTERS = 256;

    std::uint32_t m_counts[COUNTERS] = {};
};

/// @return whether it is short and neither nests nor calls anything.
bool isPlain(const char* query)
{
    const char* end = query;
    while (*end != '\0' && *end != '(' && end - query <= LONGEST_PLAIN_QUERY) {
        ++end;
    }
    return *end == '\0';
}

}  // namespace

void CompileCost::add(const CompileCost& part)
{
    nodes = cappedNodes(std::uint64_t{nodes} + part.nodes);
    stackBytes = std::max(stackBytes, part.stackBytes);
    levels = std::max(levels, part.levels);
}

/// Adds up what one piece costs, with all that it names. It lives on the heap, since there may be
/// little stack.
class FileCode::Reckoning : public InSqliteMemory {
public:
    /// @param above  the reckoning of the piece that names this one; null for the first.
    static CompileCost costOf(FileCode& code, Piece& piece, Reckoning* above)
    {
        if (piece.cost.levels > 0) {
            return piece.cost;
        }
        const std::unique_ptr<Reckoning> reckoning(new Reckoning(code, piece, above));
        if (reckoning == nullptr) {
            code.m_hadMemory = false;
            return {};
        }
        const CompileCost cost = reckoning->total();
        if (reckoning->m_isWhole && cost.nodes <= MOST_NODES) {
            piece.cost = cost;
        } else if (above != nullptr) {
            above->m_isWhole = false;
        }
        return cost;
    }

private:
    /// What stands in parentheses, or the piece itself.
    struct Scope : InSqliteMemory {
        std::unique_ptr<Scope> outer;
        bool isQuery = false;
        bool isDefinition = false;
        NameCounts names;               ///< of the query's term
        std::uint32_t stars = 0;        ///< of the term: each names every column once more
        CompileCost cost;               ///< of the term, and of what stands in it
        std::uint32_t nodesBefore = 0;  ///< of the query's terms before
        std::uint32_t terms = 1;        ///< of the term, once SQLite has taken apart what it joins
        std::uint32_t termsBefore = 0;
        std::uint32_t ownStack = 0;  ///< of its joins and windows
        bool isInFrom = false;       ///< the next token may be in a FROM clause ...
        bool isInCondition = false;  ///< ... and there in an expression
        std::uint32_t depth = 0;     ///< of the expression so far
        std::uint32_t deepest = 0;
    };

    Reckoning(FileCode& code, const Piece& piece, Reckoning* above)
        : m_code(code),
          m_piece(piece),
          m_above(above),
          m_level(above == nullptr ? 1 : above->m_level + 1),
          m_tokens(piece.begin, piece.end)
    {
    }

    CompileCost total();
    void open(bool isQuery, bool isDefinition);
    void close();
    void take();
    void takeClause();
    void takeName();
    void addPiecesNamed(const SqlToken& name);
    void addPiece(Piece& piece);
    void addPart(CompileCost& part, bool isQuery);
    bool isKnownAbove(const Piece& piece) const;
    bool goesOn() const
    {
        return m_scope->cost.nodes <= MOST_NODES && ++m_code.m_work <= MOST_WORK;
    }
    bool namesColumns() const { return !m_scope->isInFrom || m_scope->isInCondition; }
    void endExpression();
    void endTerm();

    FileCode& m_code;
    const Piece& m_piece;
    Reckoning* m_above;
    bool m_isWhole = true;  ///< no piece was left out because it is being reckoned above
    std::uint32_t m_level;
    SqlTokens m_tokens;
    int m_scopes = 0;
    std::unique_ptr<Scope> m_scope;
    CompileCost m_cost;
};

CompileCost FileCode::Reckoning::total()
{
    open(m_piece.isQuery, true);
    while (m_code.m_hadMemory && goesOn() && m_tokens.advance()) {
        if (m_tokens.opens()) {
            open(m_tokens.opensQuery(), m_tokens.opensDefinition());
        } else if (!m_tokens.closes()) {
            take();
        } else if (m_scopes > 1) {
            close();
        }
    }
    while (m_scope != nullptr) {
        close();
    }
    if (++m_cost.levels > MOST_LEVELS || m_code.m_work > MOST_WORK) {
        m_cost.nodes = MOST_NODES + 1;
    }
    return m_cost;
}

void FileCode::Reckoning::open(bool isQuery, bool isDefinition)
{
    std::unique_ptr<Scope> scope(new Scope);
    if (scope == nullptr) {
        m_code.m_hadMemory = false;
        return;
    }
    const bool isTooDeep = m_level > MOST_LEVELS || m_scopes == MOST_SCOPES;
    scope->cost.nodes = isTooDeep ? MOST_NODES + 1 : 0;
    ++m_scopes;
    scope->isQuery = isQuery;
    scope->isDefinition = isDefinition;
    if (m_scope != nullptr && !isQuery) {
        scope->isInFrom = m_scope->isInFrom;
        scope->isInCondition = m_scope->isInCondition || m_tokens.opensArguments();
    }
    scope->outer = std::move(m_scope);
    m_scope = std::move(scope);
}

void FileCode::Reckoning::close()
{
    endExpression();
    endTerm();
    --m_scopes;
    const std::unique_ptr<Scope> closed = std::move(m_scope);
    m_scope = std::move(closed->outer);
    CompileCost all = {closed->nodesBefore, closed->cost.stackBytes + closed->ownStack,
                       closed->termsBefore, closed->cost.levels};
    if (closed->isQuery || closed->isDefinition) {
        all.stackBytes += STACK_OF_LEVEL + (closed->termsBefore - 1) * STACK_OF_COMPOUND_TERM +
                          closed->deepest * STACK_OF_OPERATOR;
    }
    if (m_scope == nullptr) {
        m_cost = all;
        return;
    }
    addPart(all, closed->isQuery);
    m_scope->depth += closed->deepest + 1;
}

/// Adds what stands in the scope, or what is named there. A term that joins a compound query
/// becomes as many terms as that one has.
void FileCode::Reckoning::addPart(CompileCost& part, bool isQuery)
{
    if (m_scope->isInFrom) {
        m_scope->terms = std::min(m_scope->terms * part.terms, MOST_TERMS);
    }
    if (isQuery && namesColumns()) {
        part.stackBytes += STACK_OF_SUBQUERY;
    }
    m_scope->cost.add(part);
}

void FileCode::Reckoning::take()
{
    Scope& scope = *m_scope;
    const SqlToken& token = m_tokens.now();
    if (token.isOneOf(" union except intersect ")) {
        endExpression();
        endTerm();
    } else if (token.isSymbol(',') || token.isOneOf(AROUND_EXPRESSIONS)) {
        endExpression();
        takeClause();
    } else if (token.kind == SqlToken::SYMBOL || token.isOneOf(OPERATORS)) {
        ++scope.cost.nodes;
        ++scope.depth;
        scope.stars += token.isSymbol('*') ? 1U : 0U;
    } else {
        ++scope.cost.nodes;
        takeName();
    }
}

void FileCode::Reckoning::takeClause()
{
    const SqlToken& token = m_tokens.now();
    if (token.isOneOf(" from join ")) {
        m_scope->isInCondition = m_tokens.comparesDistinct();
        m_scope->isInFrom = m_scope->isInFrom || !m_scope->isInCondition;
        m_scope->ownStack += token.isOneOf(" join ") ? STACK_OF_JOIN : 0;
    } else if (token.isOneOf(" on using ")) {
        m_scope->isInCondition = true;
    } else if (!token.isSymbol(',') && !token.isOneOf(" as distinct when then else ")) {
        m_scope->isInFrom = false;
    }
}

void FileCode::Reckoning::takeName()
{
    m_scope->ownStack += m_tokens.now().isOneOf(" over ") ? STACK_OF_WINDOW : 0;
    if (m_tokens.now().isIn(JSON_TABLES)) {
        m_scope->ownStack = std::max(m_scope->ownStack, STACK_OF_JSON);
    }
    if (m_tokens.isQualifier() || m_tokens.isAlias()) {
        return;
    }
    const SqlToken& token = m_tokens.now();
    const bool isInList =
        token.kind == SqlToken::NUMBER && !m_scope->isQuery && !m_tokens.isAlone();
    const bool isName =
        (token.kind != SqlToken::STRING || m_tokens.isQualified()) && !m_tokens.isFunction();
    if (isName && !isInList && namesColumns()) {
        m_scope->names.add(token);  // a number names a column, too, in ORDER BY
    }
    addPiecesNamed(token);
}

void FileCode::Reckoning::addPiecesNamed(const SqlToken& name)
{
    // SQLite compiles every view to list all tables, any view that a pragma is asked about, and
    // what a virtual table names in its own words.
    const bool meansAll = sqlite3_strnicmp(name.text, PRAGMA, sizeof(PRAGMA) - 1) == 0 ||
                          name.isIn(" table_list virtual ");
    Piece* piece = meansAll ? m_code.m_pieces.begin() : m_code.firstNamed(name);
    while (piece != m_code.m_pieces.end() && (meansAll || piece->name.compare(name) == 0) &&
           goesOn()) {
        addPiece(*piece++);
    }
}

void FileCode::Reckoning::addPiece(Piece& piece)
{
    const bool isKnownHere = !piece.isLocal || piece.statement == m_piece.statement;
    if (isKnownHere && isKnownAbove(piece)) {
        m_isWhole = m_isWhole && &piece == &m_piece;
    } else if (isKnownHere) {
        CompileCost part = costOf(m_code, piece, this);
        addPart(part, piece.isQuery);
        m_code.m_takesPart = m_code.m_takesPart || !piece.isLocal;
    }
}

/// A recursive common table expression names itself, and a view that names itself is no view.
bool FileCode::Reckoning::isKnownAbove(const Piece& piece) const
{
    const Reckoning* reckoning = this;
    while (reckoning != nullptr && &reckoning->m_piece != &piece) {
        reckoning = reckoning->m_above;
    }
    return reckoning != nullptr;
}

void FileCode::Reckoning::endExpression()
{
    m_scope->deepest = std::max(m_scope->deepest, m_scope->depth);
    m_scope->depth = 0;
}

// A column that a query names twice is there twice, with all that makes it up below. What stands in
// parentheses names columns of the query around it, but for a definition, which sees none of them.
void FileCode::Reckoning::endTerm()
{
    Scope& scope = *m_scope;
    const std::uint32_t copies = scope.isQuery ? scope.names.highestCount() + scope.stars : 1;
    scope.nodesBefore = cappedNodes(scope.nodesBefore + std::uint64_t{std::max(copies, 1U)} *
                                                            scope.terms * scope.cost.nodes);
    scope.termsBefore = std::min(scope.termsBefore + scope.terms, MOST_TERMS);
    if (scope.outer != nullptr && !(scope.isDefinition && scope.isQuery)) {
        scope.outer->names.add(scope.names);
    }
    scope.names = {};
    scope.cost.nodes = 0;
    scope.stars = 0;
    scope.terms = 1;
    scope.isInFrom = false;
    scope.isInCondition = false;
}

void FileCode::clear()
{
    m_statements.clear();
    m_pieces.clear();
    m_mostCollations = 0;
    m_hadMemory = true;
}

void FileCode::add(const char* statement)
{
    bool isCode = false;
    std::size_t collations = 0;
    for (SqlTokens tokens(statement); tokens.advance();) {
        isCode = isCode || tokens.now().isOneOf(" view virtual ") || tokens.opensDefinition();
        collations += tokens.now().isOneOf(" collate ") ? 1U : 0U;
    }
    m_mostCollations = std::max(m_mostCollations, collations);
    if (isCode && !m_statements.append(statement, std::strlen(statement) + 1)) {
        m_hadMemory = false;
    }
}

void FileCode::finish()
{
    for (const char* statement = m_statements.begin(); statement != m_statements.end();
         statement += std::strlen(statement) + 1) {
        addDefinitions(statement, addObject(statement));
    }
    sort();
}

void FileCode::sort()
{
    if (m_pieces.size() == 0) {
        return;
    }
    std::qsort(m_pieces.begin(), m_pieces.size(), sizeof(Piece),
               [](const void* one, const void* other) {
                   return static_cast<const Piece*>(one)->name.compare(
                       static_cast<const Piece*>(other)->name);
               });
}

/// @return whether it is a view.
bool FileCode::addObject(const char* statement)
{
    SqlTokens tokens(statement);
    while (tokens.advance() && !tokens.now().isOneOf(" view table ")) {
    }
    const bool isView = tokens.now().isOneOf(" view ");
    const bool isConditional = tokens.next().isOneOf(" if ");
    for (int words = isConditional ? 4 : 1; words > 0; --words) {
        tokens.advance();  // past IF NOT EXISTS, to the name
    }
    while (tokens.isQualifier()) {
        tokens.advance();
        tokens.advance();
    }
    const SqlToken name = tokens.now();
    while (isView && !tokens.now().isOneOf(" as ") && tokens.advance()) {
    }
    addPiece({name, statement, isView ? tokens.behindNow() : statement, nullptr, false, isView});
    return isView;
}

void FileCode::addPiece(const Piece& piece)
{
    if (!m_pieces.append(&piece, 1)) {
        m_hadMemory = false;
    }
}

void FileCode::addDefinitions(const char* statement, bool isQuery)
{
    // One entry for each open parenthesis. What follows it, a comma or WITH is the name of the
    // definition to come.
    SqliteList<Piece> scopes;
    Piece scope = {};
    SqlTokens tokens(statement);
    do {
        if (scope.name.kind == SqlToken::END && (tokens.opens() || tokens.now().isOneOf(" as "))) {
            scope.name = tokens.last();  // WITH and RECURSIVE can be names themselves
        }
        if (tokens.opens()) {
            if (!scopes.append(&scope, 1)) {
                m_hadMemory = false;
            }
            scope = {{},
                     statement,
                     tokens.behindNow(),
                     nullptr,
                     tokens.opensDefinition(),
                     tokens.opensQuery()};
        } else if (tokens.closes() && scopes.size() > 0) {
            Piece closed = scope;
            scope = scopes.last();
            scopes.removeLast();
            closed.name = scope.name;
            closed.end = tokens.now().text;
            if (closed.isLocal) {
                addPiece(closed);
            }
        } else if (tokens.now().isSymbol(',') ||
                   (isQuery && tokens.now().isOneOf(" with recursive "))) {
            scope.name = {};
        } else if (scope.name.kind == SqlToken::END) {
            scope.name = tokens.now();
        }
    } while (tokens.advance());
}

FileCode::Piece* FileCode::firstNamed(const SqlToken& name) const
{
    return std::partition_point(m_pieces.begin(), m_pieces.end(),
                                [&](const Piece& piece) { return piece.name.compare(name) < 0; });
}

bool FileCode::has(const char* name) const
{
    const SqlToken token = {name, std::strlen(name), SqlToken::NAME};
    const Piece* const piece = firstNamed(token);
    return piece != m_pieces.end() && piece->name.compare(token) == 0;
}

bool FileCode::isTooMuch(const char* query, CompileCost& cost)
{
    m_hadMemory = true;
    m_takesPart = false;
    if (m_pieces.size() == 0 && isPlain(query)) {
        return false;
    }
    // The lookups name a column of the file as it is named there, and any SQL may be its name.
    int queries = 0;
    for (SqlTokens tokens(query); tokens.advance();) {
        queries += tokens.now().isOneOf(QUERY_WORDS) ? 1 : 0;
    }
    FileCode code;
    code.m_hadMemory = code.m_pieces.append(m_pieces.begin(), m_pieces.size());
    code.addDefinitions(query, true);
    code.sort();
    Piece all = {{}, query, query, nullptr, false, true};
    cost = Reckoning::costOf(code, all, nullptr);
    m_hadMemory = code.m_hadMemory;
    m_takesPart = code.m_takesPart;
    // A single query can be long, but names no query that it would contain several times.
    return cost.nodes > MOST_NODES && (queries > 1 || m_takesPart);
}
