#pragma once

/// Has the window painted by the processor unless the user's environment chooses a renderer. To be called
/// before the first window is made, on the main thread.
void chooseRenderer();
