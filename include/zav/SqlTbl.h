#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "zav/detail/tableParts.h"
#include "zav/export.h"
#include "zav/sqlTblUtil.h"

/// The generic model of one database table: its name, its columns in order, and one working record
/// of type T, to whose fields the columns are bound.
///
/// A concrete table derives from it, gives its column list in init() and calls init() from its own
/// constructor. A record passes through the working record on every way: a result row is decoded
/// into it and then copied out, a statement text is written from it.
///
/// Three texts of `column_t::sqlType` have a meaning in the statement texts; the comparison is
/// exact:
///
/// | sqlType                                      | in an INSERT             | in an UPDATE |
/// |----------------------------------------------|--------------------------|--------------|
/// | "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL" | null: the database picks | left out     |
/// | "VARCHAR"                                    | value in single quotes   | the same     |
/// | "INTEGER"                                    | bare number              | the same     |
/// | any other                                    | empty                    | the same     |
///
/// A "VARCHAR" column of a built-in kind is read as a `std::string`, whichever kind it is: bind a
/// number to "INTEGER". A column without a field has the value <code>'null'</code> in a "VARCHAR"
/// column and `0` in an "INTEGER" one.
///
/// @tparam T  the record type: default-constructible and copyable.
/// @note Not safe for concurrent use, and neither copied nor moved: the columns point into the
///       object's own working record.
/// @note The order of the virtual functions and of the members is that of the binary interface. The
///       tests abi/virtualTables_test.cpp and abi/layout_test.cpp fail at a change.
template <class T>
class ZAV_EXPORT SqlTbl {
public:
    /// The kind of field that a column is bound to. Values from 5 up are a derived table's own: it
    /// gives them a meaning by overriding convertValueToStr() and convertValueFromStr(). Both get
    /// the 0 of a column, too, that is bound all the same.
    enum columnValueType_t : std::uint32_t {
        VALUE_TYPE_NONE = sqlTblUtil::FIELD_NONE,      ///< 0: not bound; a column of a result that
                                                       ///< the table does not know
        VALUE_TYPE_UINT64 = sqlTblUtil::FIELD_UINT64,  ///< 1: unsigned long long
        VALUE_TYPE_UINT32 = sqlTblUtil::FIELD_UINT32,  ///< 2: unsigned int
        VALUE_TYPE_UINT16 = sqlTblUtil::FIELD_UINT16,  ///< 3: unsigned short
        VALUE_TYPE_STRING = sqlTblUtil::FIELD_STRING   ///< 4: std::string
    };

    /// One column. Copying it copies the pointer: the copy is bound to the same field.
    struct column_t {
        /// Not bound: no name, no type.
        column_t();
        /// @param columnName       the later `name`
        /// @param columnSqlType    the later `sqlType`
        /// @param columnValueType  the later `valueType`
        /// @param field            the later `pValue`
        column_t(const char* columnName, const char* columnSqlType,
                 columnValueType_t columnValueType, void* field);
        /// For other kinds of text; a template, so that only who uses it has it compiled.
        template <class Name, class SqlType>
        column_t(const Name& columnName, const SqlType& columnSqlType,
                 columnValueType_t columnValueType, void* field)
            : name(columnName), sqlType(columnSqlType), valueType(columnValueType), pValue(field)
        {
        }

        std::string name;             ///< as in the database; matched exactly, letter case included
        std::string sqlType;          ///< SQL type and constraints
        columnValueType_t valueType;  ///< type of the bound field
        void* pValue;                 ///< a field of the table's own `record`; null: not bound
    };

    /// @param name  the table's name as it stands in the statement texts. `columns` stays empty:
    ///              the derived table's constructor fills it by calling init().
    explicit SqlTbl(const std::string& name) : record(), tableName(name) {}

    SqlTbl(const SqlTbl&) = delete;
    SqlTbl& operator=(const SqlTbl&) = delete;

    virtual ~SqlTbl() {}

    /// Copies a record into the working record and returns getSqlInsertValues().
    ///
    /// @param rec  the record; `record` holds its values afterwards, even when an exception is
    ///             thrown.
    virtual std::string getSqlInsertValuesQuery(const T& rec);

    /// Copies a record into the working record and returns getSqlUpdateValues().
    ///
    /// @param rec  the record; `record` holds its values afterwards, even when an exception is
    ///             thrown.
    virtual std::string getSqlUpdateValuesQuery(const T& rec);

    /// Fills `columns` with the table's full list, each column bound to a field of `record`; does
    /// nothing if `columns` is not empty.
    ///
    /// @param name  passed on by rebuild(); the library's own tables ignore it.
    virtual void init(const std::string& name) = 0;

    /// Empties `columns` and calls init(): undoes what reorderColumns() did.
    ///
    /// @param name  passed to init().
    virtual void rebuild(const std::string& name);

    /// Writes a field of a derived table's own kind as text, for the statement texts.
    ///
    /// @param type   a kind other than the four built-in ones.
    /// @param value  the bound field.
    /// @return the text; "n/a" unless overridden.
    virtual std::string convertValueToStr(columnValueType_t type, void* value) const;

    /// Decodes the text of a cell into a field of a derived table's own kind; does nothing unless
    /// overridden. Not called for an SQL NULL, which leaves the field as it was.
    ///
    /// @param type   a kind other than the four built-in ones.
    /// @param text   the cell's text.
    /// @param value  the bound field.
    virtual void convertValueFromStr(columnValueType_t type, const std::string& text,
                                     void* value) const;

    /// Matches the column list to the header of a result, for setDatafromSqlResult().
    ///
    /// Afterwards entry i of `columns` describes column i of the result. A name that the list does
    /// not hold becomes a column without binding, whose cells are skipped; a column that the result
    /// lacks is dropped. The change lasts, and the next call starts from it: only rebuild()
    /// restores the full list.
    ///
    /// @param resultColumnNames  the names in the result's order, compared exactly. If it or
    ///                           `columns` is empty, nothing changes.
    void reorderColumns(const std::vector<std::string>& resultColumnNames);

    /// Decodes one result row into the working record.
    ///
    /// A number that is NULL or unreadable becomes 0, a NULL text "n/a"; an unreadable number is
    /// reported through sqlTblUtil::printError(). A NULL in a column of a derived table's own kind
    /// leaves its field untouched and is reported through sqlTblUtil::printWarning().
    ///
    /// @param row  one cell for each entry of `columns`, in their order; null for an SQL NULL. Not
    ///             null itself.
    /// @return the number of bound columns, modulo 65536.
    /// @throws whatever convertValueFromStr() or a diagnostic line throws; the cells before have
    ///         been decoded.
    int setDatafromSqlResult(char** row);

    /// Writes the `INSERT` statement that adds the working record as a new row. The key column gets
    /// the value null, so that the database assigns the key. A column without a field is reported
    /// through sqlTblUtil::printWarning().
    ///
    /// @return the statement, without semicolon. Quotes in texts are not escaped; numbers are
    ///         grouped where the global C++ locale groups digits.
    /// @throws std::out_of_range if `columns` is empty; whatever convertValueToStr() or a
    ///         diagnostic line throws.
    std::string getSqlInsertValues() const;

    /// Writes the `UPDATE` statement that sets every column but the key to the working record's
    /// values. It carries no condition: the caller appends one, or changes every row. A column
    /// without a field is reported through sqlTblUtil::printWarning().
    ///
    /// @return the statement, as for getSqlInsertValues().
    /// @throws std::out_of_range if there is no column beside key columns; whatever
    ///         convertValueToStr() or a diagnostic line throws.
    std::string getSqlUpdateValues() const;

    std::vector<column_t> columns;  ///< the current list, in the order of the last query's result
    T record;                       ///< the working record
    std::string tableName;          ///< set by the constructor, never changed afterwards

private:
    column_t columnFor(const std::string& resultColumnName) const;
    void decodeCell(const column_t& column, char** cell) const;
    std::string valueText(const column_t& column) const;
};

// Not inline: the library carries both constructors for its own records, and a table's column list
// calls the second once per column.
template <class T>
SqlTbl<T>::column_t::column_t() : valueType(VALUE_TYPE_NONE), pValue(nullptr)
{
}

template <class T>
SqlTbl<T>::column_t::column_t(const char* columnName, const char* columnSqlType,
                              columnValueType_t columnValueType, void* field)
    : name(columnName), sqlType(columnSqlType), valueType(columnValueType), pValue(field)
{
}

template <class T>
std::string SqlTbl<T>::getSqlInsertValuesQuery(const T& rec)
{
    record = rec;
    return getSqlInsertValues();
}

template <class T>
std::string SqlTbl<T>::getSqlUpdateValuesQuery(const T& rec)
{
    record = rec;
    return getSqlUpdateValues();
}

template <class T>
void SqlTbl<T>::rebuild(const std::string& name)
{
    columns.clear();
    init(name);
}

template <class T>
std::string SqlTbl<T>::convertValueToStr(columnValueType_t /*type*/, void* /*value*/) const
{
    return "n/a";
}

template <class T>
void SqlTbl<T>::convertValueFromStr(columnValueType_t /*type*/, const std::string& /*text*/,
                                    void* /*value*/) const
{
}

template <class T>
void SqlTbl<T>::reorderColumns(const std::vector<std::string>& resultColumnNames)
{
    if (resultColumnNames.empty() || columns.empty()) {
        return;
    }
    std::vector<column_t> reordered;
    reordered.reserve(columns.size());
    for (const std::string& name : resultColumnNames) {
        reordered.push_back(columnFor(name));
    }
    columns = std::move(reordered);  // last: a failed allocation leaves the list as it was
}

template <class T>
typename SqlTbl<T>::column_t SqlTbl<T>::columnFor(const std::string& resultColumnName) const
{
    for (const column_t& column : columns) {
        if (column.name == resultColumnName) {
            return column;
        }
    }
    column_t notKnown;
    notKnown.name = resultColumnName;
    return notKnown;
}

template <class T>
int SqlTbl<T>::setDatafromSqlResult(char** row)
{
    std::uint16_t boundColumns = 0;
    char** cell = row;
    for (const column_t& column : columns) {
        if (column.pValue != nullptr) {
            ++boundColumns;
            decodeCell(column, cell);
        }
        ++cell;
    }
    return boundColumns;
}

template <class T>
void SqlTbl<T>::decodeCell(const column_t& column, char** cell) const
{
    if (sqlTblUtil::isBuiltIn(column.valueType)) {
        sqlTblUtil::decodeField(column.valueType, column.pValue, cell);
    } else if (cell != nullptr && *cell != nullptr) {
        convertValueFromStr(column.valueType, *cell, column.pValue);
    } else {
        sqlTblUtil::printWarning("unknown type");
    }
}

template <class T>
std::string SqlTbl<T>::getSqlInsertValues() const
{
    std::string names;
    std::string values;
    for (const column_t& column : columns) {
        sqlTblUtil::warnIfNotBound(column.pValue, column.name);
        names.append("'").append(column.name).append("',");
        values.append(valueText(column)).append(",");
    }
    sqlTblUtil::eraseLastSeparator(values);
    sqlTblUtil::eraseLastSeparator(names);
    std::string statement = "INSERT INTO ";
    statement.append(tableName).append("(").append(names);
    statement.append(") VALUES(").append(values).append(")");
    return statement;
}

template <class T>
std::string SqlTbl<T>::getSqlUpdateValues() const
{
    std::string assignments;
    for (const column_t& column : columns) {
        sqlTblUtil::warnIfNotBound(column.pValue, column.name);
        if (!sqlTblUtil::isKey(column.sqlType)) {
            assignments.append("'").append(column.name).append("'=");
            assignments.append(valueText(column)).append(",");
        }
    }
    sqlTblUtil::eraseLastSeparator(assignments);
    std::string statement = "UPDATE ";
    statement.append(tableName).append(" SET ").append(assignments);
    return statement;
}

template <class T>
std::string SqlTbl<T>::valueText(const column_t& column) const
{
    const bool isOwnKind = column.pValue != nullptr && !sqlTblUtil::isBuiltIn(column.valueType);
    if (isOwnKind && sqlTblUtil::takesValue(column.sqlType)) {
        return sqlTblUtil::literal(column.sqlType,
                                   convertValueToStr(column.valueType, column.pValue));
    }
    return sqlTblUtil::valueText(column.sqlType, column.valueType, column.pValue);
}
