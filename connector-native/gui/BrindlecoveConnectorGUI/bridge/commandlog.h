#pragma once

#include <QAbstractListModel>
#include <QUuid>
#include <qqmlregistration.h>

#include <deque>

/// One connector run: what it was called and everything it printed, or why it could not be started.
struct CommandLogEntry
{
    QUuid id;
    QString title;
    QString output;
};

/// The technical log: every run of the connector, newest first, never trimmed. Main thread only.
class CommandLog : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the view model owns the log")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role { TitleRole = Qt::UserRole, OutputRole };

    using QAbstractListModel::QAbstractListModel;

    /// Adds an entry with a fresh id at row 0, in constant time however long the log is.
    void insertNewest(const QString &title, const QString &output);

    [[nodiscard]] int count() const { return static_cast<int>(m_oldestFirst.size()); }
    [[nodiscard]] const CommandLogEntry &at(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void countChanged();

private:
    std::deque<CommandLogEntry> m_oldestFirst; ///< Appended to, so that adding an entry takes constant time.
};
