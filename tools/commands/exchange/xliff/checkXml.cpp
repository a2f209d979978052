#include "checkXml.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <vector>

#include "text/formatted.h"
#include "text/lowerCase.h"
#include "text/shortened.h"
#include "xmlCharacters.h"

namespace {

using std::string_view;

constexpr string_view SPACE = " \t\r\n";
constexpr string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

bool isNameStart(char character)
{
    const bool isLetter =
        (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    return isLetter || character == '_' || character == ':' ||
           static_cast<signed char>(character) < 0;
}

bool isInName(char character)
{
    const bool isDigit = character >= '0' && character <= '9';
    return isNameStart(character) || isDigit || character == '-' || character == '.';
}

/// @param digits  of a reference such as &#10; or &#xA;.
bool isCharacterReference(string_view digits)
{
    constexpr int DECIMAL = 10;
    constexpr int HEXADECIMAL = 16;
    const bool isHexadecimal = digits.substr(0, 1) == "x";
    digits.remove_prefix(isHexadecimal ? 1 : 0);
    std::uint32_t codePoint = 0;
    const char* end = digits.data() + digits.size();
    const auto [read, error] =
        std::from_chars(digits.data(), end, codePoint, isHexadecimal ? HEXADECIMAL : DECIMAL);
    return error == std::errc() && read == end && isXmlCharacter(codePoint);
}

bool isReference(string_view name)
{
    static const std::set<string_view> known = {"amp", "lt", "gt", "quot", "apos"};
    return name.substr(0, 1) == "#" ? isCharacterReference(name.substr(1)) : known.count(name) > 0;
}

class Scan {
public:
    explicit Scan(string_view text) : m_text(text) {}

    void run()
    {
        checkCharacters();
        skip(BYTE_ORDER_MARK);
        takeDeclaration();
        while (!isAtEnd()) {
            if (next() == '<') {
                takeMarkup();
            } else {
                takeText();
            }
        }
        if (!m_open.empty()) {
            fail(formatted("the element {} is not closed", m_open.back()));
        }
        if (!m_hasRoot) {
            fail("there is no element");
        }
    }

private:
    [[noreturn]] void fail(const std::string& what) const { failAt(m_position, what); }

    [[noreturn]] static void failAt(std::size_t position, const std::string& what)
    {
        throw UnfitXml(position, what);
    }

    bool isAtEnd() const { return m_position == m_text.size(); }
    char next() const { return isAtEnd() ? '\0' : m_text[m_position]; }
    string_view rest() const { return m_text.substr(m_position); }
    bool startsWith(string_view text) const { return rest().substr(0, text.size()) == text; }

    bool skip(string_view text)
    {
        const bool isThere = startsWith(text);
        m_position += isThere ? text.size() : 0;
        return isThere;
    }

    bool skipSpace()
    {
        const std::size_t before = m_position;
        m_position = std::min(m_text.find_first_not_of(SPACE, m_position), m_text.size());
        return m_position > before;
    }

    /// @return what stands before the text, which is skipped.
    string_view takeTo(string_view end)
    {
        const std::size_t found = m_text.find(end, m_position);
        if (found == string_view::npos) {
            fail(formatted("{} is missing", end));
        }
        const string_view taken = m_text.substr(m_position, found - m_position);
        m_position = found + end.size();
        return taken;
    }

    void checkCharacters() const
    {
        const std::size_t length = xmlLength(m_text);
        if (length < m_text.size()) {
            failAt(length, "there is a character that XML cannot hold, or a byte that is no UTF-8");
        }
    }

    void takeDeclaration()
    {
        if (!skip("<?xml") || (!isAtEnd() && isInName(next()))) {
            return;
        }
        const std::size_t begin = m_position;
        const string_view declaration = takeTo("?>");
        const std::size_t named = declaration.find("encoding");
        if (named == string_view::npos) {
            return;
        }
        const std::size_t open = declaration.find_first_of("\"'", named);
        const std::size_t close =
            open == string_view::npos ? open : declaration.find(declaration[open], open + 1);
        if (close == string_view::npos) {
            failAt(begin, "the declaration is malformed");
        }
        const std::string encoding(declaration.substr(open + 1, close - open - 1));
        if (lowerCase(encoding) != "utf-8" && lowerCase(encoding) != "us-ascii") {
            failAt(begin, formatted("the encoding is {}; it must be UTF-8", shortened(encoding)));
        }
    }

    void takeText()
    {
        const std::size_t begin = m_position;
        m_position = std::min(m_text.find('<', m_position), m_text.size());
        const string_view text = m_text.substr(begin, m_position - begin);
        if (m_open.empty() && text.find_first_not_of(SPACE) != string_view::npos) {
            failAt(begin + text.find_first_not_of(SPACE), "text stands outside of all elements");
        }
        if (const std::size_t end = text.find("]]>"); end != string_view::npos) {
            failAt(begin + end, "]]> stands in a text");
        }
        checkReferences(begin, text);
    }

    static void checkReferences(std::size_t begin, string_view text)
    {
        constexpr std::size_t LONGEST = 20;
        for (std::size_t at = text.find('&'); at != string_view::npos;
             at = text.find('&', at + 1)) {
            const string_view start = text.substr(at + 1, LONGEST);
            if (start.find(';') == string_view::npos ||
                !isReference(start.substr(0, start.find(';')))) {
                failAt(begin + at, formatted("{} begins no reference that XML knows",
                                             shortened(text.substr(at, LONGEST))));
            }
        }
    }

    void takeMarkup()
    {
        if (skip("<!--")) {
            const std::size_t begin = m_position;
            const string_view comment = takeTo("-->");
            if (comment.find("--") != string_view::npos ||
                (!comment.empty() && comment.back() == '-')) {
                failAt(begin, "-- stands in a comment");
            }
        } else if (!m_open.empty() && skip("<![CDATA[")) {
            takeTo("]]>");
        } else if (startsWith("<!")) {
            fail("a document type or the like stands here; remove it");
        } else if (skip("<?")) {
            if (lowerCase(std::string(takeName())) == "xml") {
                fail("a declaration stands elsewhere than at the beginning");
            }
            takeTo("?>");
        } else if (skip("</")) {
            takeEnd();
        } else {
            takeStart();
        }
    }

    string_view takeName()
    {
        const std::size_t begin = m_position;
        if (!isNameStart(next())) {
            fail("a name is missing");
        }
        while (isInName(next())) {
            ++m_position;
        }
        return m_text.substr(begin, m_position - begin);
    }

    void takeStart()
    {
        if (m_open.empty() && m_hasRoot) {
            fail("a second element stands beside the outermost one");
        }
        ++m_position;
        m_hasRoot = true;
        count();
        m_open.push_back(takeName());
        if (m_open.size() > MOST_XML_DEPTH) {
            fail(formatted("more than {} elements stand in one another", MOST_XML_DEPTH));
        }
        takeAttributes();
        if (skip("/>")) {
            m_open.pop_back();
        } else if (!skip(">")) {
            fail(formatted("the element {} is malformed", shortened(m_open.back())));
        }
    }

    void takeAttributes()
    {
        std::set<string_view> names;
        while (skipSpace() && isNameStart(next())) {
            count();
            const string_view name = takeName();
            if (!names.insert(name).second) {
                fail(formatted("the attribute {} stands twice", shortened(name)));
            }
            skipSpace();
            const bool isAssigned = skip("=");
            skipSpace();
            if (!isAssigned || (next() != '"' && next() != '\'')) {
                fail(formatted("the attribute {} has no value in quotes", shortened(name)));
            }
            const string_view quote = m_text.substr(m_position++, 1);
            const std::size_t begin = m_position;
            const string_view value = takeTo(quote);
            if (value.find('<') != string_view::npos) {
                failAt(begin, "a < stands in an attribute");
            }
            checkReferences(begin, value);
        }
    }

    void takeEnd()
    {
        const string_view name = takeName();
        skipSpace();
        if (m_open.empty() || m_open.back() != name || !skip(">")) {
            fail(formatted("</{}> closes no element", shortened(name)));
        }
        m_open.pop_back();
    }

    void count()
    {
        if (++m_nodes > MOST_XML_NODES) {
            fail(formatted("there are more than {} elements and attributes", MOST_XML_NODES));
        }
    }

    string_view m_text;
    std::size_t m_position = 0;
    std::vector<string_view> m_open;
    bool m_hasRoot = false;
    std::size_t m_nodes = 0;
};

}  // namespace

void checkXml(string_view text)
{
    Scan(text).run();
}
