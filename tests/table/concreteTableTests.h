#pragma once

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "support/records.h"

/// What holds for every concrete table of the library.
///
/// @tparam Traits  `Table` and `Record`; `NAME`, the table's name; `SOME_COLUMN`, the name of one
///                 that is neither the first nor the last; `fullList(table)`, its columns.
template <class Traits>
class ConcreteTable : public testing::Test {
protected:
    std::vector<ColumnFields> fullList() const { return Traits::fullList(m_table); }

    static std::vector<std::string> anyNames() { return {"", Traits::NAME, "another name"}; }

    typename Traits::Table m_table{Traits::NAME};
};

TYPED_TEST_SUITE_P(ConcreteTable);

TYPED_TEST_P(ConcreteTable, ConstructorBuildsTheColumns)
{
    EXPECT_EQ(columnsOf(this->m_table), this->fullList());
    EXPECT_EQ(this->m_table.columns.capacity(), this->fullList().size());
    EXPECT_EQ(this->m_table.tableName, TypeParam::NAME);
    EXPECT_EQ(fieldsOf(this->m_table.record), fieldsOf(typename TypeParam::Record()));
}

TYPED_TEST_P(ConcreteTable, NameIsTheConstructorsAlone)
{
    const typename TypeParam::Table table("another name");
    EXPECT_EQ(table.tableName, "another name");
    EXPECT_EQ(columnsOf(table), TypeParam::fullList(table));
}

TYPED_TEST_P(ConcreteTable, InitChangesNothingWhileThereAreColumns)
{
    for (const std::string& name : this->anyNames()) {
        this->m_table.init(name);
        EXPECT_EQ(columnsOf(this->m_table), this->fullList());
    }
    this->m_table.reorderColumns({TypeParam::SOME_COLUMN, "unknown"});
    const std::vector<ColumnFields> reordered = columnsOf(this->m_table);
    for (const std::string& name : this->anyNames()) {
        this->m_table.init(name);
        EXPECT_EQ(columnsOf(this->m_table), reordered);
        EXPECT_EQ(this->m_table.tableName, TypeParam::NAME);
    }
}

TYPED_TEST_P(ConcreteTable, InitFillsAnEmptyListAndIgnoresItsArgument)
{
    this->m_table.columns.clear();
    this->m_table.init("another name");
    EXPECT_EQ(columnsOf(this->m_table), this->fullList());
    EXPECT_EQ(this->m_table.tableName, TypeParam::NAME);
}

TYPED_TEST_P(ConcreteTable, RebuildRestoresTheFullListWithAnyArgument)
{
    for (const std::string& name : this->anyNames()) {
        this->m_table.reorderColumns({TypeParam::SOME_COLUMN, "unknown"});
        this->m_table.rebuild(name);
        EXPECT_EQ(columnsOf(this->m_table), this->fullList()) << name;
        EXPECT_EQ(this->m_table.tableName, TypeParam::NAME);
    }
}

TYPED_TEST_P(ConcreteTable, DerivesFromTheModelOfItsRecordAndAddsNoData)
{
    using Model = SqlTbl<typename TypeParam::Record>;
    EXPECT_TRUE((std::is_convertible<typename TypeParam::Table*, Model*>::value));
    EXPECT_EQ(sizeof(typename TypeParam::Table), sizeof(Model));
}

TYPED_TEST_P(ConcreteTable, HooksAreTheDefaults)
{
    const auto ownKind = static_cast<typename TypeParam::Table::columnValueType_t>(5);
    std::string field = "kept";
    this->m_table.convertValueFromStr(ownKind, "new", &field);
    EXPECT_EQ(field, "kept");
    EXPECT_EQ(this->m_table.convertValueToStr(ownKind, &field), "n/a");
}

REGISTER_TYPED_TEST_SUITE_P(ConcreteTable, ConstructorBuildsTheColumns, NameIsTheConstructorsAlone,
                            InitChangesNothingWhileThereAreColumns,
                            InitFillsAnEmptyListAndIgnoresItsArgument,
                            RebuildRestoresTheFullListWithAnyArgument,
                            DerivesFromTheModelOfItsRecordAndAddsNoData, HooksAreTheDefaults);
