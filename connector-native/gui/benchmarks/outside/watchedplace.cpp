#include "outside/watchedplace.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <thread>

namespace {

constexpr int placeX = 560;
constexpr int placeY = 740;
// Short against a start, long enough to leave the processor to it.
constexpr std::chrono::microseconds interval(200);

} // namespace

void WatchedPlace::Close::operator()(void *display) const
{
    XCloseDisplay(static_cast<Display *>(display));
}

WatchedPlace::WatchedPlace()
    : m_display(XOpenDisplay(nullptr))
{
    if (!m_display) {
        std::cerr << "no X display\n";
        std::exit(EXIT_FAILURE);
    }
}

unsigned long WatchedPlace::pixel() const
{
    auto *const display = static_cast<Display *>(m_display.get());
    XImage *image = XGetImage(display, DefaultRootWindow(display), placeX, placeY, 1, 1, AllPlanes, ZPixmap);
    const unsigned long colour = XGetPixel(image, 0, 0);
    XDestroyImage(image);
    return colour;
}

void WatchedPlace::waitFor(unsigned long colour) const
{
    while (pixel() != colour) {
        std::this_thread::sleep_for(interval);
    }
}

void WatchedPlace::waitForOtherThan(unsigned long colour) const
{
    while (pixel() == colour) {
        std::this_thread::sleep_for(interval);
    }
}
