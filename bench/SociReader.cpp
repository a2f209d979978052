#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include "Reader.h"
#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"

namespace {

/// The values of one row, bound once and filled by each fetch. SOCI has no exchange for 16 bits
/// without a sign, and leaves a variable alone when its column is NULL.
struct Number {
    long long value = 0;
    soci::indicator indicator = soci::i_null;

    template <class Field>
    void store(Field& field) const
    {
        field = indicator == soci::i_null ? Field{0} : static_cast<Field>(value);
    }
};

struct Text {
    std::string value;
    soci::indicator indicator = soci::i_null;

    void store(std::string& field) const { field = indicator == soci::i_null ? "n/a" : value; }
};

template <class Value>
auto intoValue(Value& bound)
{
    return soci::into(bound.value, bound.indicator);
}

class SociReader : public SqlReader {
public:
    explicit SociReader(const std::string& file)
        : m_session(soci::sqlite3, "db=" + file + " readonly=true")
    {
        m_session << PAGE_CACHE_SQL;
    }

private:
    std::size_t readFaultTypes(const std::string& sql) override
    {
        Number code;
        Text alias;
        Text type;
        Number bug;
        Number cycle;
        soci::statement statement = (m_session.prepare << sql, intoValue(code), intoValue(alias),
                                     intoValue(type), intoValue(bug), intoValue(cycle));
        std::vector<FaultTypeDef> records;
        for (bool more = statement.execute(true); more; more = statement.fetch()) {
            records.emplace_back();
            FaultTypeDef& record = records.back();
            code.store(record.code);
            alias.store(record.alias);
            type.store(record.type);
            bug.store(record.bug);
            cycle.store(record.clear_after_cycle_nr);
        }
        return records.size();
    }

    std::size_t readDescriptions(const std::string& sql) override
    {
        Number id;
        Number faultType;
        Number language;
        Text name;
        Text shortDescription;
        Text description;
        Text comment;
        Text remedy;
        soci::statement statement =
            (m_session.prepare << sql, intoValue(id), intoValue(faultType), intoValue(language),
             intoValue(name), intoValue(shortDescription), intoValue(description),
             intoValue(comment), intoValue(remedy));
        std::vector<Descriptions> records;
        for (bool more = statement.execute(true); more; more = statement.fetch()) {
            records.emplace_back();
            Descriptions& record = records.back();
            id.store(record.id);
            faultType.store(record.id_fault_type);
            language.store(record.id_language);
            name.store(record.name);
            shortDescription.store(record.short_description);
            description.store(record.description);
            comment.store(record.comment);
            remedy.store(record.remedy);
        }
        return records.size();
    }

    soci::session m_session;
};

}  // namespace

std::unique_ptr<Reader> openSoci(const std::string& file)
{
    return std::make_unique<SociReader>(file);
}
