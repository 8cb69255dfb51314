#include "screens/Menu.h"

#include "audio/SoundQueue.h"
#include "input/PressMeaning.h"

#include <algorithm>
#include <cstddef>

namespace Wirefall {

std::span<const std::string_view> MenuLabels(std::span<const MenuRow> rows,
                                             std::span<std::string_view> labels) {
    std::ranges::transform(rows, labels.begin(), [](const MenuRow& row) {
        return std::string_view(LocalizedText(row.Label));
    });
    return labels.first(rows.size());
}

void PressInMenu(GameApp& app, PressCode code, std::span<const MenuRow> rows,
                 std::int32_t& selection, MenuAction back) {
    const auto count = static_cast<std::int32_t>(rows.size());
    if (IsUp(app.KeyboardBindings, code)) {
        EnqueueSound(app, SoundEvent::UiMove);
        selection = (count + selection - 1) % count;
    } else if (IsDown(app.KeyboardBindings, code)) {
        EnqueueSound(app, SoundEvent::UiMove);
        selection = (selection + 1) % count;
    } else if (IsBack(code)) {
        EnqueueSound(app, SoundEvent::UiBack);
        back(app);
    } else if (IsConfirm(code)) {
        EnqueueSound(app, SoundEvent::UiConfirm);
        rows[static_cast<std::size_t>(selection)].Confirm(app);
    }
}

void PressToLeave(GameApp& app, PressCode code, SoundEvent confirmSound, MenuAction leave) {
    if (IsConfirm(code)) {
        EnqueueSound(app, confirmSound);
        leave(app);
    } else if (IsBack(code)) {
        EnqueueSound(app, SoundEvent::UiBack);
        leave(app);
    }
}

} // namespace Wirefall
