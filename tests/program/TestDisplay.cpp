#include "tests/program/TestDisplay.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xfixes.h>

#include <cstdlib>
#include <fstream>

#include "tests/program/Waiting.h"

namespace {

constexpr unsigned long kPinkPixel = 0xFFFF00FF;

// A window that ends between two requests must not end the test.
int ignoreError(::Display*, XErrorEvent*) { return 0; }

// As a window manager does; clients do without what no name is known for.
void makeNamesKnown(::Display* connection) {
    for (const char* name : {"WM_PROTOCOLS", "WM_DELETE_WINDOW", "_NET_WM_NAME", "UTF8_STRING"})
        XInternAtom(connection, name, False);
}

std::string firstLine(const std::string& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return file.eof() ? "" : line;
}

// Not every program sets the old property, which XFetchName reads.
std::string title(::Display* connection, ::Window window) {
    XTextProperty text;
    const Atom name = XInternAtom(connection, "_NET_WM_NAME", False);
    if (!XGetTextProperty(connection, window, &text, name) && !XGetWMName(connection, window, &text))
        return "";
    const std::string copy(reinterpret_cast<const char*>(text.value), text.nitems);
    XFree(text.value);
    return copy;
}

bool isVisible(::Display* connection, ::Window window) {
    XWindowAttributes attributes;
    return XGetWindowAttributes(connection, window, &attributes) && attributes.map_state == IsViewable;
}

}  // namespace

TestDisplay::TestDisplay(int width, int height)
    : TestDisplay(
          {"/usr/bin/Xvfb", "-screen", "0", std::to_string(width) + "x" + std::to_string(height) + "x24"}) {}

TestDisplay::TestDisplay(const std::vector<std::string>& server) {
    std::vector<std::string> command = server;
    // The server writes its number to its own stdout once it is ready.
    for (const char* option : {"-displayfd", "1", "-nolisten", "tcp", "-noreset"}) command.push_back(option);
    const std::string number = mFolder.path("number");
    mServer = std::make_unique<Child>(command, Child::Place{mFolder.path(), {}, number, "/dev/null"});
    waitUntil([&] { return !firstLine(number).empty(); });
    mName = ":" + firstLine(number);
    XSetErrorHandler(ignoreError);
    mConnection = XOpenDisplay(mName.c_str());
    if (!mConnection) std::abort();
    makeNamesKnown(mConnection);
}

TestDisplay::~TestDisplay() { XCloseDisplay(mConnection); }

Picture TestDisplay::picture() const {
    XWindowAttributes root;
    XGetWindowAttributes(mConnection, DefaultRootWindow(mConnection), &root);
    XImage* image =
        XGetImage(mConnection, DefaultRootWindow(mConnection), 0, 0, static_cast<unsigned>(root.width),
                  static_cast<unsigned>(root.height), AllPlanes, ZPixmap);
    Picture picture{root.width, root.height, {}};
    picture.pixels.reserve(static_cast<std::size_t>(root.width * root.height));
    for (int y = 0; y < root.height; ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(image->data + y * image->bytes_per_line);
        for (int x = 0; x < root.width; ++x) picture.pixels.push_back(row[x] & 0xFFFFFF);
    }
    XDestroyImage(image);
    return picture;
}

bool TestDisplay::cursorIsVisible() const {
    XFixesCursorImage* cursor = XFixesGetCursorImage(mConnection);
    bool isVisible = false;
    for (int i = 0; i < cursor->width * cursor->height; ++i) isVisible |= (cursor->pixels[i] >> 24) != 0;
    XFree(cursor);
    return isVisible;
}

TestDisplay::Window TestDisplay::createWindow(int width, int height, int depth) {
    const ::Window root = DefaultRootWindow(mConnection);
    XVisualInfo visual;
    if (!XMatchVisualInfo(mConnection, DefaultScreen(mConnection), depth, TrueColor, &visual)) std::abort();
    XSetWindowAttributes attributes{};
    attributes.background_pixel = kPinkPixel;
    attributes.border_pixel = 0;
    attributes.override_redirect = True;
    attributes.colormap = XCreateColormap(mConnection, root, visual.visual, AllocNone);
    const ::Window window =
        XCreateWindow(mConnection, root, 0, 0, static_cast<unsigned>(width), static_cast<unsigned>(height), 0,
                      depth, InputOutput, visual.visual,
                      CWBackPixel | CWBorderPixel | CWOverrideRedirect | CWColormap, &attributes);
    XMapWindow(mConnection, window);
    XSync(mConnection, False);
    return window;
}

TestDisplay::Area TestDisplay::areaOf(Window window) const {
    XWindowAttributes attributes;
    Area area;
    if (!XGetWindowAttributes(mConnection, window, &attributes)) return area;
    ::Window child;
    XTranslateCoordinates(mConnection, window, attributes.root, 0, 0, &area.left, &area.top, &child);
    area.width = attributes.width;
    area.height = attributes.height;
    return area;
}

void TestDisplay::resizeWindow(Window window, int width, int height) {
    XResizeWindow(mConnection, window, static_cast<unsigned>(width), static_cast<unsigned>(height));
    XSync(mConnection, False);
}

void TestDisplay::destroyWindow(Window window) {
    XDestroyWindow(mConnection, window);
    XSync(mConnection, False);
}

TestDisplay::Window TestDisplay::windowWithTitle(const std::string& wanted) const {
    ::Window root, parent, *children = nullptr, found = 0;
    unsigned count = 0;
    if (!XQueryTree(mConnection, DefaultRootWindow(mConnection), &root, &parent, &children, &count)) return 0;
    for (unsigned i = 0; i < count; ++i)
        if (isVisible(mConnection, children[i]) && title(mConnection, children[i]).starts_with(wanted))
            found = children[i];  // they come from the bottom to the top
    XFree(children);
    return found;
}

void TestDisplay::focus(Window window) {
    XSetInputFocus(mConnection, window, RevertToParent, CurrentTime);
    XSync(mConnection, False);
}

void TestDisplay::close(Window window) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(mConnection, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(mConnection, "WM_DELETE_WINDOW", False));
    XSendEvent(mConnection, window, False, NoEventMask, &event);
    XSync(mConnection, False);
}

void TestDisplay::press(const std::string& key) {
    const unsigned code = XKeysymToKeycode(mConnection, XStringToKeysym(key.c_str()));
    XTestFakeKeyEvent(mConnection, code, True, CurrentTime);
    XTestFakeKeyEvent(mConnection, code, False, CurrentTime);
    XSync(mConnection, False);
}

void TestDisplay::movePointer(int x, int y) {
    XTestFakeMotionEvent(mConnection, DefaultScreen(mConnection), x, y, CurrentTime);
    XSync(mConnection, False);
}

void TestDisplay::click() {
    XTestFakeButtonEvent(mConnection, 1, True, CurrentTime);
    XTestFakeButtonEvent(mConnection, 1, False, CurrentTime);
    XSync(mConnection, False);
}
