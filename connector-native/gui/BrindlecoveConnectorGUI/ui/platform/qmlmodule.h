#pragma once

#include <string_view>

/// Registers the module's types and its compiled QML. Call it before any of them is loaded.
void registerQmlModule();

/// Lets the compiled QML be used by the Qt version that it was made with only. With another version, Qt would
/// compile it again and store the result in the user's home, where this program writes nothing.
void guardCompiledQml(std::string_view runningQt);
