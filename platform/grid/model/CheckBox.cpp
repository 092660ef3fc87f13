#include "platform/grid/model/CheckBox.h"

#include "platform/runtime/Formats.h"
#include "platform/runtime/Text.h"

namespace norvel::grid {

bool showsCheckBoxes(const Column& column) {
    return column.ValueItems.Translate && column.ValueItems.Presentation == presentationCheckBox;
}

std::optional<Check> checkOf(std::string_view cellText) {
    if (cellText.empty()) return Check::Blank;
    if (cellText == "0" || equalsText(cellText, "False") || equalsText(cellText, "Falso"))
        return Check::Clear;
    if (cellText == "-1" || equalsText(cellText, "True") || equalsText(cellText, "Vero"))
        return Check::Checked;
    const auto number = textToNumber(cellText);
    if (!number) return std::nullopt;
    return *number == 0 ? Check::Clear : Check::Checked;
}

} // namespace norvel::grid
