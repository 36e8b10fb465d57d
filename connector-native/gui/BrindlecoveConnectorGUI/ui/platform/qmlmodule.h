#pragma once

/// Registers the module's types and its compiled QML. Call it before any of them is loaded.
void registerQmlModule();
