#pragma once

#include <QObject>
#include <qqmlregistration.h>

/// The part of a text that is selected in a document made from it. A document counts each CR LF as one
/// character and every other character as itself. Pure.
[[nodiscard]] QString selectedSource(const QString &source, qsizetype start, qsizetype end);

/// Copies what the connector printed character by character; a document's own copy turns no-break blanks
/// into blanks and every line end into a line feed. Main thread only.
class ExactCopy : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE void copy(const QString &source, int selectionStart, int selectionEnd) const;
};
