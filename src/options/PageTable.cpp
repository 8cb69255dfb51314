#include "options/PageTable.h"

#include "words/ControllerHint.h"
#include "words/SharedTexts.h"

namespace Wirefall {

namespace {

constexpr GameText OnText = {"Common.On", "ON"};
constexpr GameText OffText = {"Common.Off", "OFF"};

} // namespace

void AdjustSelectedRow(const PageTable& page, const PageContext& context, std::int32_t direction) {
    const std::span<const PageRow> rows = page.Rows(context.App);
    const auto row = static_cast<std::size_t>(context.App.Rows.*page.Row);
    if (row < rows.size() && rows[row].Adjust != nullptr) {
        rows[row].Adjust(context, direction);
    }
}

const std::string& OnOffText(bool on) { return LocalizedText(on ? OnText : OffText); }

std::string SelectBackHint(const PageView& view, const GameText& keyboardHint) {
    std::string hint = BuildControllerHint(view.App, view.Controllers, LocalizedText(Texts::Select),
                                           LocalizedText(Texts::Back));
    return hint.empty() ? LocalizedText(keyboardHint) : hint;
}

PageHints ValuePageHints(const PageView& view) {
    return {.Upper = LocalizedText("Options.Hint.LeftRightChange", "LEFT / RIGHT CHANGE VALUE"),
            .Lower = SelectBackHint(
                view, {"Options.Hint.EnterSelectEscBack", "ENTER SELECT     ESC BACK"})};
}

} // namespace Wirefall
