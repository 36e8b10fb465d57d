#pragma once

#include "ui/platform/itemfilter.h"

/// The part of a text that is selected in a document made from it. A document counts each CR LF as one
/// character and every other character as itself. Pure.
[[nodiscard]] QString selectedSource(const QString &source, qsizetype start, qsizetype end);

/// Makes a text edit copy what the connector printed character by character, to the clipboard and to the
/// selection that the middle button pastes. A document's own copy turns no-break blanks into blanks and every
/// line end into a line feed. Main thread only.
class ExactCopy : public ItemFilter
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString source MEMBER m_source NOTIFY sourceChanged)

public:
    using ItemFilter::ItemFilter;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void sourceChanged();

private:
    [[nodiscard]] QString selection() const;
    void mendSelection() const;

    QString m_source;
};
