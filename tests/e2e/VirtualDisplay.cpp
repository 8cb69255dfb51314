#include "e2e/VirtualDisplay.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

// Last, since it defines many plain words as macros.
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace Wirefall::Testing {

namespace {

constexpr auto StartLimit = std::chrono::seconds(60);
constexpr auto KeyLimit = std::chrono::seconds(60);

// A window can go away between finding it and asking it to close.
int IgnoreError(Display* /*display*/, XErrorEvent* /*event*/) { return 0; }

class Pipe {
public:
    Pipe() {
        if (pipe2(Ends.data(), O_CLOEXEC) != 0) {
            throw std::system_error(errno, std::generic_category(), "pipe2");
        }
    }
    ~Pipe() {
        close(Ends[0]);
        CloseWriteEnd();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    Pipe(Pipe&&) = delete;
    Pipe& operator=(Pipe&&) = delete;

    int WriteEnd() const { return Ends[1]; }

    void CloseWriteEnd() {
        if (Ends[1] >= 0) {
            close(Ends[1]);
            Ends[1] = -1;
        }
    }

    // Without the line's end; what there is when the writer goes or the time is over.
    std::string ReadLine(std::chrono::milliseconds limit) {
        std::string line;
        pollfd readable = {.fd = Ends[0], .events = POLLIN, .revents = 0};
        char c = 0;
        while (poll(&readable, 1, static_cast<int>(limit.count())) == 1 &&
               read(Ends[0], &c, 1) == 1 && c != '\n') {
            line += c;
        }
        return line;
    }

private:
    std::array<int, 2> Ends = {-1, -1};
};

struct DestroyImage {
    void operator()(XImage* image) const { XDestroyImage(image); }
};

} // namespace

struct VirtualDisplay::Connection {
    explicit Connection(const std::string& name) : Handle(XOpenDisplay(name.c_str())) {
        if (Handle == nullptr) {
            throw std::runtime_error("The X server " + name + " refuses the connection");
        }
        XSetErrorHandler(IgnoreError);
    }
    ~Connection() { XCloseDisplay(Handle); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    Connection(Connection&&) = delete;
    Connection& operator=(Connection&&) = delete;

    std::pair<std::int32_t, std::int32_t> ScreenSize() const {
        const int screen = DefaultScreen(Handle);
        return {DisplayWidth(Handle, screen), DisplayHeight(Handle, screen)};
    }

    bool HasProperty(Atom name) const {
        Atom type = None;
        int format = 0;
        unsigned long count = 0;
        unsigned long rest = 0;
        unsigned char* value = nullptr;
        XGetWindowProperty(Handle, DefaultRootWindow(Handle), name, 0, 1, False, AnyPropertyType,
                           &type, &format, &count, &rest, &value);
        if (value != nullptr) {
            XFree(value);
        }
        return type != None;
    }

    std::vector<Window> ChildrenOf(Window window) const {
        Window root = None;
        Window parent = None;
        Window* children = nullptr;
        unsigned int count = 0;
        std::vector<Window> found;
        if (XQueryTree(Handle, window, &root, &parent, &children, &count) != 0 &&
            children != nullptr) {
            found.assign(children, children + count);
            XFree(children);
        }
        return found;
    }

    bool IsCalled(Window window, const std::string& title) const {
        char* name = nullptr;
        if (XFetchName(Handle, window, &name) == 0 || name == nullptr) {
            return false;
        }
        const bool is = std::string_view(name).starts_with(title);
        XFree(name);
        return is;
    }

    // A window manager puts windows into frames of its own.
    std::optional<WindowPlace> FindBelow(Window window, const std::string& title) const {
        for (const Window child : ChildrenOf(window)) {
            XWindowAttributes attributes = {};
            if (IsCalled(child, title) && XGetWindowAttributes(Handle, child, &attributes) != 0 &&
                attributes.map_state == IsViewable) {
                WindowPlace place = {
                    .X = 0, .Y = 0, .Width = attributes.width, .Height = attributes.height};
                Window below = None;
                XTranslateCoordinates(Handle, child, DefaultRootWindow(Handle), 0, 0, &place.X,
                                      &place.Y, &below);
                return place;
            }
            if (const std::optional<WindowPlace> place = FindBelow(child, title)) {
                return place;
            }
        }
        return std::nullopt;
    }

    Display* Handle;
};

VirtualDisplay::VirtualDisplay(std::int32_t width, std::int32_t height,
                               const std::filesystem::path& folder)
    : Xdotool(FindProgram("xdotool", "xdotool")), Folder(folder), Log(folder / "display.log") {
    Pipe readiness;
    const std::string size = std::to_string(width) + "x" + std::to_string(height) + "x24";
    Server = std::make_unique<ChildProgram>(
        ProgramSpec{.Arguments = {FindProgram("Xvfb", "xvfb"), "-displayfd",
                                  std::to_string(readiness.WriteEnd()), "-nolisten", "tcp",
                                  "-noreset", "-screen", "0", size},
                    .Environment = {},
                    .Output = Log},
        readiness.WriteEnd());
    readiness.CloseWriteEnd();
    const std::string number = readiness.ReadLine(StartLimit);
    if (number.empty()) {
        throw std::runtime_error("Xvfb has not started; see " + Log.string());
    }
    DisplayName = ":" + number;
    Client = std::make_unique<Connection>(DisplayName);
}

VirtualDisplay::~VirtualDisplay() = default;

void VirtualDisplay::StartWindowManager() {
    const std::filesystem::path configuration = Folder / "window-manager";
    std::ofstream(configuration) << "<?xml version=\"1.0\"?>\n"
                                    "<JWM>\n"
                                    "  <Desktops width=\"1\" height=\"1\"/>\n"
                                    "</JWM>\n";
    Manager = std::make_unique<ChildProgram>(
        ProgramSpec{.Arguments = {FindProgram("jwm", "jwm"), "-f", configuration.string()},
                    .Environment = {{"DISPLAY", DisplayName}},
                    .Output = Log});
    // It sets this on the root window once it manages what is there.
    const Atom ready = XInternAtom(Client->Handle, "_NET_SUPPORTING_WM_CHECK", False);
    const auto end = std::chrono::steady_clock::now() + StartLimit;
    while (!Client->HasProperty(ready)) {
        if (Manager->ExitCode() || std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("The window manager has not started; see " + Log.string());
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

Screenshot VirtualDisplay::Grab() {
    const auto [width, height] = Client->ScreenSize();
    return Grab({.X = 0, .Y = 0, .Width = width, .Height = height}).value();
}

std::optional<WindowPlace> VirtualDisplay::FindWindow(const std::string& title) {
    return Client->FindBelow(DefaultRootWindow(Client->Handle), title);
}

std::optional<Screenshot> VirtualDisplay::Grab(const WindowPlace& place) {
    Display* const display = Client->Handle;
    const auto [width, height] = Client->ScreenSize();
    if (place.X < 0 || place.Y < 0 || place.X + place.Width > width ||
        place.Y + place.Height > height) {
        return std::nullopt;
    }
    Screenshot picture{.Width = place.Width, .Height = place.Height, .Pixels = {}};
    const std::unique_ptr<XImage, DestroyImage> image(
        XGetImage(display, DefaultRootWindow(display), place.X, place.Y,
                  static_cast<unsigned int>(place.Width), static_cast<unsigned int>(place.Height),
                  AllPlanes, ZPixmap));
    if (image == nullptr) {
        throw std::runtime_error("The X server gives no picture of its screen");
    }
    picture.Pixels.reserve(static_cast<std::size_t>(picture.Width) *
                           static_cast<std::size_t>(picture.Height));
    for (int y = 0; y < picture.Height; ++y) {
        for (int x = 0; x < picture.Width; ++x) {
            const unsigned long pixel = XGetPixel(image.get(), x, y);
            picture.Pixels.push_back({static_cast<std::uint8_t>(pixel >> 16U),
                                      static_cast<std::uint8_t>(pixel >> 8U),
                                      static_cast<std::uint8_t>(pixel)});
        }
    }
    return picture;
}

void VirtualDisplay::PressKeys(const std::vector<std::string>& keys) {
    std::vector<std::string> arguments = {"key"};
    arguments.insert(arguments.end(), keys.begin(), keys.end());
    RunXdotool(arguments);
}

void VirtualDisplay::HoldKey(const std::string& key) { RunXdotool({"keydown", key}); }

void VirtualDisplay::ReleaseKey(const std::string& key) { RunXdotool({"keyup", key}); }

bool VirtualDisplay::CloseWindows() {
    Display* const display = Client->Handle;
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    const std::vector<Window> windows = Client->ChildrenOf(DefaultRootWindow(display));
    for (const Window window : windows) {
        event.xclient.window = window;
        XSendEvent(display, window, False, NoEventMask, &event);
    }
    XSync(display, False);
    return !windows.empty();
}

void VirtualDisplay::RunXdotool(const std::vector<std::string>& arguments) {
    std::vector<std::string> all = {Xdotool};
    all.insert(all.end(), arguments.begin(), arguments.end());
    ChildProgram program(
        {.Arguments = all, .Environment = {{"DISPLAY", DisplayName}}, .Output = Log});
    if (program.WaitForExit(KeyLimit) != 0) {
        throw std::runtime_error("xdotool has failed; see " + Log.string());
    }
}

} // namespace Wirefall::Testing
