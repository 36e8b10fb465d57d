#pragma once

/// Installs this module's accessible interfaces, which expose some items better than Qt Quick's own, or
/// conceal their text. Call it once, before the first window. Main thread only.
void installAccessibleFactory();
