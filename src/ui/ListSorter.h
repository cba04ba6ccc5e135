// Sorts a list by a column of texts, numbers or dates.
#pragma once

#include "controls/ListView.h"
#include "platform/Platform.h"

namespace ostrevin {

/// Sorts by the text of a column, or by its value where the column's tag is "NUMBER" or "DATE": for the time
/// of the sort, keys stand in the cells, and each item's tag holds the cell's text, a zero character and the
/// tag. What is no number or no date comes first. toggleOrder turns the list's direction round. A failure
/// leaves the list locked against painting.
void ListSorter(Platform& platform, ListView& list, const ColumnHeader& column, bool toggleOrder);

}  // namespace ostrevin
