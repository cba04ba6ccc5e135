#include "controls/CommonDialog.h"

#include "controls/Form.h"

namespace ostrevin {

void CommonDialog::ShowSave() {
    const std::string chosen = owner_.GetToolkit().ShowSave(&owner_, {title_, filter_, fileName_});
    if (!chosen.empty()) {
        fileName_ = chosen;
    }
}

}  // namespace ostrevin
