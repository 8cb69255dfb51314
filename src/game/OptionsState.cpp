#include "game/OptionsState.h"

namespace Wirefall {

void EndCapture(BindingCapture& capture) {
    capture.CaptureActive = false;
    capture.CaptureDevice = CaptureDevice::None;
}

void ResetOptionsPages(OptionsState& options) {
    options.OptionsPage = OptionsPage::Root;
    EndCapture(options.Capture);
    options.ControlsEdit.PendingValid = false;
    options.GraphicsEdit.Valid = false;
    options.AudioEdit.Valid = false;
}

} // namespace Wirefall
