#include "bridge/commandlog.h"

void CommandLog::insertNewest(const QString &title, const QString &output)
{
    beginInsertRows({}, 0, 0);
    m_oldestFirst.push_back({QUuid::createUuid(), title, output});
    endInsertRows();
    emit countChanged();
}

const CommandLogEntry &CommandLog::at(int row) const
{
    return m_oldestFirst.at(m_oldestFirst.size() - 1 - static_cast<std::size_t>(row));
}

int CommandLog::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant CommandLog::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const CommandLogEntry &found = at(index.row());
    switch (role) {
    case TitleRole:
        return found.title;
    case OutputRole:
        return found.output;
    default:
        return {};
    }
}

QHash<int, QByteArray> CommandLog::roleNames() const
{
    return {{TitleRole, "title"}, {OutputRole, "output"}};
}
