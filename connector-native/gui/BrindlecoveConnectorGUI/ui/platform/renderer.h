#pragma once

/// Selects the software renderer unless the user's environment chooses another. Call it before the first
/// window is created, on the main thread.
void chooseRenderer();
