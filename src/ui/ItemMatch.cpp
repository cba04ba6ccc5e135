#include "ui/ItemMatch.h"

#include "platform/Text.h"

namespace ostrevin {

ItemMatch::ItemMatch(const ColumnHeader& column, std::string_view search)
    : column_(column.Index()), search_(UpperCase(search)) {}

bool ItemMatch::operator()(const ListItem& item) const {
    return UpperCase(item.Cell(column_)).find(search_) != std::string::npos;
}

}  // namespace ostrevin
