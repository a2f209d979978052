#pragma once

#include "zav/SqlTbl.h"

/// What a column is made from. A list of these is far less code than one of the columns themselves,
/// each with two strings to destroy should the next one fail.
template <class T>
struct ColumnBinding {
    const char* name;
    const char* sqlType;
    typename SqlTbl<T>::columnValueType_t valueType;
    void* field;

    explicit operator typename SqlTbl<T>::column_t() const
    {
        return {name, sqlType, valueType, field};
    }
};
