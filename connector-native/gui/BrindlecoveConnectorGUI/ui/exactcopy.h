#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>

/// The part of a text that is selected in a document made from it. A document counts each CR LF as one
/// character and every other character as itself. Pure.
[[nodiscard]] QString selectedSource(const QString &source, qsizetype start, qsizetype end);

/// Makes a text edit copy what the connector printed character by character, to the clipboard and to the
/// selection that the middle button pastes. A document's own copy turns no-break blanks into blanks and every
/// line end into a line feed. Main thread only.
class ExactCopy : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *edit READ edit WRITE setEdit NOTIFY editChanged)
    Q_PROPERTY(QString source MEMBER m_source NOTIFY sourceChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem *edit() const { return m_edit; }
    void setEdit(QQuickItem *edit);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void editChanged();
    void sourceChanged();

private:
    [[nodiscard]] QString selection() const;
    void mendSelection() const;

    QPointer<QQuickItem> m_edit;
    QString m_source;
};
