#pragma once

#include "service/tables.h"
#include "zav/ZavSqlDescriptionsTbl.h"
#include "zav/ZavSqlFaultTypeDefTbl.h"

/// The library's own definition of the table that holds records of a kind, under the name by which
/// the library asks for it.
template <class Record>
class LibraryTable;

template <>
class LibraryTable<FaultTypeDef> : public ZavSqlFaultTypeDefTbl {
public:
    LibraryTable() : ZavSqlFaultTypeDefTbl(tables::FAULT_TYPE_DEFINITION) {}
};

template <>
class LibraryTable<Descriptions> : public ZavSqlDescriptionsTbl {
public:
    LibraryTable() : ZavSqlDescriptionsTbl(tables::DESCRIPTIONS) {}
};
