#pragma once

#include <QtCore/qbytearray.h>
#include <QtCore/qstringlist.h>

#include <functional>

using InstantConnector = std::function<QByteArray(const QStringList &arguments)>;

/// Answers in place of every child process: a program that is linked with this one starts none.
[[nodiscard]] InstantConnector &instantConnector();
