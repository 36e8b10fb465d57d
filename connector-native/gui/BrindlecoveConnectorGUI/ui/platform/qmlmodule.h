#pragma once

/// Makes the types of the module known to QML, and its compiled QML. To be called before any of them is
/// loaded.
void registerQmlModule();
