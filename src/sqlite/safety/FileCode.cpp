#include "FileCode.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <utility>

namespace {

/// Of 240 bytes each: 60 MB.
constexpr std::uint64_t MOST_NODES = 250000;

/// Views over views, and common table expressions and generated columns over each other.
constexpr int MOST_LEVELS = 16;

// Measured on x86-64 with SQLite 3.40, and rounded up; a 32-bit machine needs less.
constexpr std::uint64_t STACK_OF_LEVEL = 600;
constexpr std::uint64_t STACK_OF_COMPOUND_TERM = 550;
constexpr std::uint64_t STACK_OF_OPERATOR = 420;
constexpr std::uint64_t STACK_OF_JSON = 150 * 1024;  ///< of its deepest nesting, 2000

bool isAnyOf(const SqlToken& token, std::initializer_list<const char*> words)
{
    return std::any_of(words.begin(), words.end(),
                       [&](const char* word) { return token.isWord(word); });
}

bool endsTerm(const SqlToken& token)
{
    return isAnyOf(token, {"union", "except", "intersect"});
}

bool beginsQuery(const SqlToken& token)
{
    return isAnyOf(token, {"select", "with", "values"});
}

/// Words that no name can be without quotes, and between which an expression stands.
bool endsExpression(const SqlToken& token)
{
    return isAnyOf(token, {"select", "from", "where", "group", "order", "having", "limit", "on",
                           "using", "join", "as", "values", "distinct", "all", "create", "table",
                           "when", "then", "else"});
}

/// Words that no name can be without quotes, and each of which may make an expression deeper.
bool isOperatorWord(const SqlToken& token)
{
    return isAnyOf(token, {"and", "or", "not", "is", "in", "between", "case", "collate", "isnull",
                           "notnull", "exists", "escape"});
}

bool isBefore(const SqlToken& one, const SqlToken& other)
{
    return one.compare(other) < 0;
}

/// @return how often the most frequent name occurs.
std::uint64_t mostFrequent(std::vector<SqlToken>::iterator begin,
                           std::vector<SqlToken>::iterator end)
{
    std::sort(begin, end, isBefore);
    std::uint64_t most = 0;
    while (begin != end) {
        const auto next = std::upper_bound(begin, end, *begin, isBefore);
        most = std::max(most, static_cast<std::uint64_t>(next - begin));
        begin = next;
    }
    return most;
}

/// A token with its neighbours, which tell what it is.
struct Window {
    explicit Window(const char* begin, const char* end) : m_tokens(begin, end)
    {
        next = m_tokens.next();
    }

    bool advance()
    {
        last = now;
        now = next;
        next = m_tokens.next();
        return now.kind != SqlToken::END;
    }

    bool opens() const { return now.isSymbol('('); }
    bool closes() const { return now.isSymbol(')'); }

    /// `name AS (...)` and `name AS MATERIALIZED (...)`; a generated column is written the same.
    bool opensDefinition() const
    {
        return opens() && (last.isWord("as") || last.isWord("materialized"));
    }

    bool isQualifier() const { return next.isSymbol('.'); }
    bool isAlias() const { return last.isWord("as"); }
    bool isFunction() const { return now.isAnyName() && next.isSymbol('('); }

    SqlToken last;
    SqlToken now;
    SqlToken next;

private:
    SqlTokens m_tokens;
};

Window windowOn(const std::string& text)
{
    return Window(text.data(), text.data() + text.size());
}

/// From `VIEW` or `TABLE` on to the name, past `IF NOT EXISTS` and the schema's name.
void advanceToName(Window& window)
{
    const bool isConditional = window.next.isWord("if");
    for (int words = isConditional ? 4 : 1; words > 0; --words) {
        window.advance();
    }
    while (window.isQualifier()) {
        window.advance();
        window.advance();
    }
}

bool holdsCode(const std::string& statement)
{
    Window window = windowOn(statement);
    while (window.advance()) {
        if (isAnyOf(window.now, {"view", "virtual"}) || window.opensDefinition()) {
            return true;
        }
    }
    return false;
}

std::uint64_t capped(std::uint64_t nodes)
{
    return std::min(nodes, MOST_NODES + 1);
}

}  // namespace

void CompileCost::add(const CompileCost& part)
{
    nodes = capped(nodes + part.nodes);
    stackBytes = std::max(stackBytes, part.stackBytes);
    comparesPatterns = comparesPatterns || part.comparesPatterns;
}

/// Adds up what one piece costs, with all that it names.
class FileCode::Reckoning {
public:
    /// @param above  the reckoning that has come upon this piece; null for the first.
    static CompileCost costOf(const FileCode& code, const Piece& piece, const Reckoning* above)
    {
        // Not on the stack, of which there may be little.
        return std::unique_ptr<Reckoning>(new Reckoning(code, piece, above))->cost();
    }

private:
    Reckoning(const FileCode& code, const Piece& piece, const Reckoning* above)
        : m_code(code),
          m_piece(piece),
          m_above(above),
          m_level(above == nullptr ? 1 : above->m_level + 1),
          m_window(piece.begin, piece.end)
    {
    }

    CompileCost cost();

    /// What stands in parentheses; the outermost is the piece itself.
    struct Scope {
        bool isQuery = false;
        bool isDefinition = false;
        std::size_t names = 0;          ///< where its own begin
        std::size_t termNames = 0;      ///< where those of the term begin
        CompileCost cost;               ///< of the term, and of what stands in it
        std::uint64_t stars = 0;        ///< of the term: each is one more mention of every column
        std::uint64_t nodesBefore = 0;  ///< of the query's terms before
        std::uint64_t terms = 1;
        std::uint64_t depth = 0;  ///< of the expression so far
        std::uint64_t deepest = 0;
    };

    bool isKnownAbove(const Piece& piece) const;
    void open();
    void close();
    void take();
    void takeName();
    void addPiecesNamed(const SqlToken& name);
    void endExpression();
    void endTerm();

    const FileCode& m_code;
    const Piece& m_piece;
    const Reckoning* m_above;
    int m_level;
    Window m_window;
    std::vector<Scope> m_scopes;
    std::vector<SqlToken> m_names;  ///< of columns, in all scopes that are open
};

CompileCost FileCode::Reckoning::cost()
{
    if (m_level > MOST_LEVELS) {
        return {MOST_NODES + 1, 0, false};
    }
    m_scopes.resize(2);  // what the piece costs, and the piece
    m_scopes.back().isQuery = m_piece.isQuery;
    while (m_scopes.back().cost.nodes <= MOST_NODES && m_window.advance()) {
        if (m_window.opens()) {
            open();
        } else if (!m_window.closes()) {
            take();
        } else if (m_scopes.size() > 2) {
            close();
        }
    }
    while (m_scopes.size() > 1) {
        close();
    }
    return m_scopes.front().cost;
}

void FileCode::Reckoning::open()
{
    Scope scope;
    scope.isQuery = beginsQuery(m_window.next);
    scope.isDefinition = m_window.opensDefinition();
    scope.names = m_names.size();
    scope.termNames = m_names.size();
    m_scopes.push_back(scope);
}

void FileCode::Reckoning::close()
{
    endExpression();
    endTerm();
    Scope closed = m_scopes.back();
    m_scopes.pop_back();
    const bool isPiece = m_scopes.size() == 1;
    if (closed.isQuery || closed.isDefinition || isPiece) {
        closed.cost.stackBytes += STACK_OF_LEVEL + (closed.terms - 1) * STACK_OF_COMPOUND_TERM +
                                  closed.deepest * STACK_OF_OPERATOR;
    }
    closed.cost.nodes = closed.nodesBefore;
    m_scopes.back().cost.add(closed.cost);
    m_scopes.back().depth += closed.deepest + 1;
    if (closed.isDefinition) {
        m_names.resize(closed.names);  // it sees no column of the query around it
    }
}

void FileCode::Reckoning::take()
{
    Scope& scope = m_scopes.back();
    const SqlToken& token = m_window.now;
    if (::endsTerm(token)) {
        endExpression();
        endTerm();
        ++scope.terms;
    } else if (token.isSymbol(',') || ::endsExpression(token)) {
        endExpression();
    } else if (isOperatorWord(token) || token.kind == SqlToken::SYMBOL) {
        ++scope.cost.nodes;
        ++scope.depth;
        scope.stars += token.isSymbol('*') ? 1U : 0U;
    } else {
        ++scope.cost.nodes;
        takeName();
    }
}

void FileCode::Reckoning::takeName()
{
    const SqlToken& token = m_window.now;
    CompileCost& cost = m_scopes.back().cost;
    cost.comparesPatterns = cost.comparesPatterns || isAnyOf(token, {"like", "glob"});
    if (m_window.isFunction()) {
        const bool isJson =
            token.length > 4 && SqlToken{SqlToken::NAME, token.text, 4}.isWord("json");
        cost.stackBytes = std::max(cost.stackBytes, isJson ? STACK_OF_JSON : 0);
        return;
    }
    if (m_window.isQualifier() || m_window.isAlias()) {
        return;
    }
    if (token.kind != SqlToken::STRING) {
        m_names.push_back(token);  // or a number, by which ORDER BY means a column
    }
    addPiecesNamed(token);
}

void FileCode::Reckoning::addPiecesNamed(const SqlToken& name)
{
    const auto [begin, end] = m_code.piecesNamed(name);
    for (auto piece = begin; piece != end; ++piece) {
        if ((piece->isLocal && piece->statement != m_piece.statement) || isKnownAbove(*piece)) {
            continue;
        }
        m_scopes.back().cost.add(costOf(m_code, *piece, this));
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
    Scope& scope = m_scopes.back();
    scope.deepest = std::max(scope.deepest, scope.depth);
    scope.depth = 0;
}

// A column that a query names twice is there twice with all that makes it up below. Within a scope
// that is no query, and within a table, nothing is put in the place of a name.
void FileCode::Reckoning::endTerm()
{
    Scope& scope = m_scopes.back();
    const auto names = m_names.begin() + static_cast<std::ptrdiff_t>(scope.termNames);
    const std::uint64_t copies =
        scope.isQuery ? mostFrequent(names, m_names.end()) + scope.stars : 1;
    scope.nodesBefore =
        capped(scope.nodesBefore + std::max<std::uint64_t>(copies, 1) * scope.cost.nodes);
    scope.cost.nodes = 0;
    scope.stars = 0;
    scope.termNames = m_names.size();
}

void FileCode::read(std::vector<std::string> statements)
{
    m_statements = std::move(statements);
    m_pieces.clear();
    m_statements.erase(std::remove_if(m_statements.begin(), m_statements.end(),
                                      [](const std::string& text) { return !holdsCode(text); }),
                       m_statements.end());
    for (const std::string& statement : m_statements) {
        addObject(statement);
        addDefinitions(statement);
    }
    std::sort(m_pieces.begin(), m_pieces.end(),
              [](const Piece& one, const Piece& other) { return isBefore(one.name, other.name); });
}

void FileCode::addObject(const std::string& statement)
{
    Window window = windowOn(statement);
    while (window.advance() && !isAnyOf(window.now, {"view", "table"})) {
    }
    const bool isView = window.now.isWord("view");
    advanceToName(window);
    m_pieces.push_back({window.now, &statement, false, isView, window.next.text,
                        statement.data() + statement.size()});
}

void FileCode::addDefinitions(const std::string& statement)
{
    struct Scope {
        SqlToken name;  // the first one since the parenthesis, the last comma or WITH
        Piece definition;
        bool isDefinition;
    };
    std::vector<Scope> scopes(1);
    Window window = windowOn(statement);
    while (window.advance()) {
        SqlToken& name = scopes.back().name;
        if (window.opens()) {
            const bool isQuery = beginsQuery(window.next);
            scopes.push_back({{},
                              {name, &statement, true, isQuery, window.now.text + 1, nullptr},
                              window.opensDefinition()});
        } else if (window.closes() && scopes.size() > 1) {
            if (scopes.back().isDefinition) {
                scopes.back().definition.end = window.now.text;
                m_pieces.push_back(scopes.back().definition);
            }
            scopes.pop_back();
        } else if (window.now.isSymbol(',') || isAnyOf(window.now, {"with", "recursive"})) {
            name = {};
        } else if (name.kind == SqlToken::END) {
            name = window.now;
        }
    }
}

std::pair<std::vector<FileCode::Piece>::const_iterator,
          std::vector<FileCode::Piece>::const_iterator>
FileCode::piecesNamed(const SqlToken& name) const
{
    struct ByName {
        bool operator()(const Piece& piece, const SqlToken& other) const
        {
            return isBefore(piece.name, other);
        }
        bool operator()(const SqlToken& other, const Piece& piece) const
        {
            return isBefore(other, piece.name);
        }
    };
    return std::equal_range(m_pieces.begin(), m_pieces.end(), name, ByName());
}

bool FileCode::has(const char* name) const
{
    const auto [begin, end] = piecesNamed({SqlToken::NAME, name, std::strlen(name)});
    return std::any_of(begin, end, [](const Piece& piece) { return !piece.isLocal; });
}

SqlToken FileCode::tooMuchIn(const std::string& query, CompileCost& cost) const
{
    Window window = windowOn(query);
    while (!m_pieces.empty() && window.advance()) {
        // To list all tables, SQLite looks into each.
        const bool isAnyPiece = isAnyOf(window.now, {"table_list", "pragma_table_list"});
        const auto [begin, end] =
            isAnyPiece ? std::pair(m_pieces.begin(), m_pieces.end()) : piecesNamed(window.now);
        for (auto piece = begin; piece != end && cost.nodes <= MOST_NODES; ++piece) {
            if (!piece->isLocal) {
                cost.add(Reckoning::costOf(*this, *piece, nullptr));
            }
        }
        if (cost.nodes > MOST_NODES) {
            return window.now;
        }
    }
    return {};
}
