#include "options/XModes.h"

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>
#include <memory>
#include <stdexcept>
#include <string>

namespace Wirefall {

namespace {

struct FreeResources {
    void operator()(XRRScreenResources* resources) const { XRRFreeScreenResources(resources); }
};

void AddMode(Display* connection, RROutput output, const XMode& mode) {
    std::string name = std::to_string(mode.Width) + "x" + std::to_string(mode.Height) + "@" +
                       std::to_string(mode.Hz);
    const auto width = static_cast<unsigned>(mode.Width);
    const auto height = static_cast<unsigned>(mode.Height);
    // Without a border of blanked pixels, so that the clock is the pixels of a second.
    XRRModeInfo info = {};
    info.name = name.data();
    info.nameLength = static_cast<unsigned>(name.size());
    info.width = info.hSyncStart = info.hSyncEnd = info.hTotal = width;
    info.height = info.vSyncStart = info.vSyncEnd = info.vTotal = height;
    info.dotClock = static_cast<unsigned long>(mode.Hz) * width * height;
    const RRMode created = XRRCreateMode(connection, DefaultRootWindow(connection), &info);
    XRRAddOutputMode(connection, output, created);
}

} // namespace

XModes::XModes(const std::vector<XMode>& modes) {
    Display* const connection = XOpenDisplay(nullptr);
    if (connection == nullptr) {
        throw std::runtime_error("No X server can be reached");
    }
    Connection.reset(connection, [](Display* display) { XCloseDisplay(display); });
    const std::unique_ptr<XRRScreenResources, FreeResources> resources(
        XRRGetScreenResources(connection, DefaultRootWindow(connection)));
    for (const XMode& mode : modes) {
        AddMode(connection, resources->outputs[0], mode);
    }
    XSync(connection, False);
}

} // namespace Wirefall
