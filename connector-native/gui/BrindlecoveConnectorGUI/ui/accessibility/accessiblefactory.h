#pragma once

/// From now on assistive technologies learn of the window's items what this module tells them, where Qt Quick
/// by itself would tell less, or too much. Call it once, before the first window. Main thread only.
void installAccessibleFactory();
