#pragma once

#include <memory>

/// One place of the X display, which windows come to cover.
class WatchedPlace
{
public:
    /// Ends the program when there is no display.
    WatchedPlace();

    /// The colour at the place where every window to be measured paints.
    [[nodiscard]] unsigned long pixel() const;
    /// Blocks until that colour is the given one, or another one.
    void waitFor(unsigned long colour) const;
    void waitForOtherThan(unsigned long colour) const;

private:
    // A type of Xlib, whose header claims too many names to be included here.
    struct Close
    {
        void operator()(void *display) const;
    };
    std::unique_ptr<void, Close> m_display;
};
