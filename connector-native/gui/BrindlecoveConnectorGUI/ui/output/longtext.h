#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// Very long texts as an edit can show them without delay. Main thread only.
class LongText : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Whether the text is long enough for any of this to matter.
    [[nodiscard]] Q_INVOKABLE static bool isLong(const QString &text);

    /// The text with most of its line ends turned into line separators, if it is long: an edit lays out each
    /// paragraph by itself, and tens of thousands of them take seconds. The lines look the same, and every
    /// position of a document made from it is the one that it is in a document made from the text.
    [[nodiscard]] Q_INVOKABLE static QString inFewParagraphs(const QString &text);
};
