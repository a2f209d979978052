#pragma once

#include "TableRow.h"

/// A check that goes through the rows of a table, once or twice. What it keeps of a row is little:
/// the second reading is for those that must see all rows before they know about one.
class RowCheck {
public:
    virtual ~RowCheck() = default;

    /// Sees each row, in the order of the library.
    virtual void read(const TableRow& row) = 0;

    /// Called once the table has been read to its end.
    ///
    /// @return whether the rows are wanted a second time.
    virtual bool finish() { return false; }

    /// Sees each row a second time, in the same order, if any check of the table wants that.
    virtual void readAgain(const TableRow& /*row*/) {}
};
