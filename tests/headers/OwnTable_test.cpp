// An application that reads a table of its own through the library's templates.

#include <gtest/gtest.h>
#include <zav/Sqlite3Db.h>
#include <zav/ZavSqlDescriptionsTbl.h>
#include <zav/ZavSqlFaultTypeDefTbl.h>
#include <zav/sqlTblUtil.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "support/CoutCapture.h"
#include "support/TempDir.h"
#include "support/database.h"
#include "support/reporterLines.h"

namespace {

enum class Unit { NONE, CELSIUS, BAR };

struct Sensor {
    unsigned int id = 0;
    unsigned long long serial = 0;
    unsigned short port = 0;
    std::string label;
    double offset = 0;
    bool active = false;
    Unit unit = Unit::NONE;
};

class SensorTbl : public SqlTbl<Sensor> {
public:
    static constexpr columnValueType_t VALUE_TYPE_DOUBLE = static_cast<columnValueType_t>(5);
    static constexpr columnValueType_t VALUE_TYPE_BOOL = static_cast<columnValueType_t>(0x7fffffff);
    static constexpr columnValueType_t VALUE_TYPE_UNIT = static_cast<columnValueType_t>(0xffffffff);

    SensorTbl() : SqlTbl<Sensor>("sensors") { SensorTbl::init(""); }

    void init(const std::string& /*name*/) override
    {
        if (!columns.empty()) {
            return;
        }
        columns = {
            {"id", "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL", VALUE_TYPE_UINT32, &record.id},
            {"serial", "INTEGER", VALUE_TYPE_UINT64, &record.serial},
            {"port", "INTEGER", VALUE_TYPE_UINT16, &record.port},
            {"label", "VARCHAR", VALUE_TYPE_STRING, &record.label},
            {"offset", "INTEGER", VALUE_TYPE_DOUBLE, &record.offset},
            {"active", "INTEGER", VALUE_TYPE_BOOL, &record.active},
            {"unit", "VARCHAR", VALUE_TYPE_UNIT, &record.unit},
        };
    }

    std::string convertValueToStr(columnValueType_t type, void* value) const override
    {
        if (type == VALUE_TYPE_DOUBLE) {
            return std::to_string(*static_cast<const double*>(value));
        }
        if (type == VALUE_TYPE_BOOL) {
            return *static_cast<const bool*>(value) ? "1" : "0";
        }
        return *static_cast<const Unit*>(value) == Unit::BAR ? "bar" : "celsius";
    }

    void convertValueFromStr(columnValueType_t type, const std::string& text,
                             void* value) const override
    {
        if (type == VALUE_TYPE_DOUBLE) {
            *static_cast<double*>(value) = std::stod(text);
        } else if (type == VALUE_TYPE_BOOL) {
            *static_cast<bool*>(value) = text == "1";
        } else {
            *static_cast<Unit*>(value) = text == "bar" ? Unit::BAR : Unit::CELSIUS;
        }
    }
};

/// What a list may hold in place of the record: anything that is made from one.
struct Label {
    explicit Label(const Sensor& sensor) : text(sensor.label) {}
    std::string text;
};

auto fieldsOf(const Sensor& sensor)
{
    return std::make_tuple(sensor.id, sensor.serial, sensor.port, sensor.label, sensor.offset,
                           sensor.active, sensor.unit);
}

class OwnTable : public testing::Test {
protected:
    OwnTable()
    {
        runSql(m_file,
               "CREATE TABLE sensors(id INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL, unit VARCHAR,"
               " serial, port INTEGER, label VARCHAR, offset REAL, active INTEGER, place VARCHAR)");
    }

    void run(const std::string& sql) { runSql(m_file, sql); }

    template <class Element>
    std::vector<Element> read()
    {
        Sqlite3Db db(0);
        EXPECT_EQ(db.openDb(m_file, true), 0);
        std::vector<Element> elements;
        const int count = db.getTbl("SELECT * FROM sensors ORDER BY id", elements, &m_table);
        EXPECT_EQ(count, static_cast<int>(elements.size()));
        return elements;
    }

    const TempDir m_folder;
    const std::string m_file = m_folder.file("sensors.db");
    SensorTbl m_table;
};

TEST_F(OwnTable, IsReadFromAFile)
{
    run("INSERT INTO sensors VALUES(7,'bar','18446744073709551615',8080,'Öldruck',-0.5,1,'east');"
        "INSERT INTO sensors VALUES(8,'celsius',42,70000,NULL,2,0,NULL)");
    const CoutCapture capture;
    const std::vector<Sensor> sensors = read<Sensor>();
    ASSERT_EQ(sensors.size(), 2U);
    EXPECT_EQ(fieldsOf(sensors[0]),
              std::make_tuple(7U, 18446744073709551615ULL, 8080, "Öldruck", -0.5, true, Unit::BAR));
    EXPECT_EQ(fieldsOf(sensors[1]),
              std::make_tuple(8U, 42ULL, 0, "n/a", 2.0, false, Unit::CELSIUS));
    EXPECT_EQ(capture.text(), errorLine("casting value \"70000\", typeid=t"));
}

TEST_F(OwnTable, NullOfAnOwnKindKeepsTheValueOfTheRowBefore)
{
    run("INSERT INTO sensors VALUES(7,'bar',1,2,'a',-0.5,1,'east');"
        "INSERT INTO sensors VALUES(8,NULL,3,4,'b',NULL,NULL,'west')");
    const CoutCapture capture;
    const std::vector<Sensor> sensors = read<Sensor>();
    ASSERT_EQ(sensors.size(), 2U);
    EXPECT_EQ(fieldsOf(sensors[1]), std::make_tuple(8U, 3ULL, 4, "b", -0.5, true, Unit::BAR));
    const std::string warning = warningLine("unknown type");
    EXPECT_EQ(capture.text(), warning + warning + warning);
}

TEST_F(OwnTable, IsReadIntoElementsMadeFromItsRecord)
{
    run("INSERT INTO sensors(label) VALUES('first'),('second')");
    const CoutCapture capture;  // of warnings
    const std::vector<Label> labels = read<Label>();
    ASSERT_EQ(labels.size(), 2U);
    EXPECT_EQ(labels[0].text, "first");
    EXPECT_EQ(labels[1].text, "second");
}

TEST_F(OwnTable, IsWrittenByItsStatementTexts)
{
    Sensor sensor;
    sensor.id = 99;
    sensor.serial = 42;
    sensor.port = 1;
    sensor.label = "Öldruck";
    sensor.offset = 1.5;
    sensor.active = true;
    sensor.unit = Unit::BAR;
    const std::string insert = m_table.getSqlInsertValuesQuery(sensor);
    EXPECT_EQ(insert,
              "INSERT INTO sensors('id','serial','port','label','offset','active','unit') "
              "VALUES(null,42,1,'Öldruck',1.500000,1,'bar')");
    run(insert);
    sensor.port = 2;
    sensor.unit = Unit::CELSIUS;
    const std::string update = m_table.getSqlUpdateValuesQuery(sensor);
    EXPECT_EQ(update,
              "UPDATE sensors SET 'serial'=42,'port'=2,'label'='Öldruck','offset'=1.500000,"
              "'active'=1,'unit'='celsius'");
    run(update + " WHERE id=1");

    const std::vector<Sensor> sensors = read<Sensor>();
    ASSERT_EQ(sensors.size(), 1U);
    EXPECT_EQ(fieldsOf(sensors[0]),
              std::make_tuple(1U, 42ULL, 2, "Öldruck", 1.5, true, Unit::CELSIUS));
}

TEST_F(OwnTable, StandsBesideTheTablesOfTheLibrary)
{
    run(schemaSql() +
        "INSERT INTO fault_type_definition VALUES(12,'E012','error',0,3);"
        "INSERT INTO descriptions VALUES(7,12,2,'Overheat','','','','');"
        "INSERT INTO sensors(serial,port,offset,active,unit) VALUES(12,3,0,0,'bar')");
    Sqlite3Db db(0);
    ASSERT_EQ(db.openDb(m_file, true), 0);
    ZavSqlFaultTypeDefTbl faultTypeDefTbl("fault_type_definition");
    ZavSqlDescriptionsTbl descriptionsTbl("descriptions");
    std::vector<FaultTypeDef> faultTypeDefs;
    std::vector<Descriptions> descriptions;
    std::vector<Sensor> sensors;
    faultTypeDefTbl.reorderColumns({"alias", "code"});
    EXPECT_EQ(
        db.getTbl("SELECT alias,code FROM fault_type_definition", faultTypeDefs, &faultTypeDefTbl),
        1);
    EXPECT_EQ(db.getTbl("SELECT * FROM descriptions", descriptions, &descriptionsTbl), 1);
    EXPECT_EQ(db.getTbl("SELECT * FROM sensors", sensors, &m_table), 1);
    EXPECT_EQ(faultTypeDefs.at(0).code, 12U);
    EXPECT_EQ(descriptions.at(0).name, "Overheat");
    EXPECT_EQ(sensors.at(0).serial, 12U);
    EXPECT_EQ(descriptionsTbl.getSqlInsertValues(),
              "INSERT INTO descriptions('id','id_fault_type','id_language','name',"
              "'short_description','description','comment','remedy') "
              "VALUES(null,12,2,'Overheat','','','','')");

    std::string text = "4711";
    char* cell = text.data();
    unsigned int number = 0;
    EXPECT_EQ(sqlTblUtil::setValueFromSqlResult(&cell, &number), 0);
    EXPECT_EQ(number, 4711U);
}

}  // namespace
