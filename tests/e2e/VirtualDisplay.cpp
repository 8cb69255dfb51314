#include "e2e/VirtualDisplay.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

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

    Display* Handle;
};

VirtualDisplay::VirtualDisplay(std::int32_t width, std::int32_t height,
                               const std::filesystem::path& folder)
    : Xdotool(FindProgram("xdotool", "xdotool")), Log(folder / "display.log") {
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

Screenshot VirtualDisplay::Grab() {
    Display* const display = Client->Handle;
    const int screen = DefaultScreen(display);
    Screenshot picture{.Width = DisplayWidth(display, screen),
                       .Height = DisplayHeight(display, screen),
                       .Pixels = {}};
    const std::unique_ptr<XImage, DestroyImage> image(XGetImage(
        display, RootWindow(display, screen), 0, 0, static_cast<unsigned int>(picture.Width),
        static_cast<unsigned int>(picture.Height), AllPlanes, ZPixmap));
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
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count) == 0) {
        return false;
    }
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    for (unsigned int i = 0; i < count; ++i) {
        event.xclient.window = children[i];
        XSendEvent(display, children[i], False, NoEventMask, &event);
    }
    if (children != nullptr) {
        XFree(children);
    }
    XSync(display, False);
    return count > 0;
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
