#include "bridge/commandlog.h"

void CommandLog::insertNewest(const QString &title, const QString &output)
{
    beginInsertRows({}, 0, 0);
    m_oldestFirst.push_back({QUuid::createUuid(), output, placeOfTitle(title)});
    endInsertRows();
    emit countChanged();
}

int CommandLog::placeOfTitle(const QString &title)
{
    const auto place = m_places.constFind(title);
    if (place != m_places.cend()) {
        return *place;
    }
    m_titles.append(title);
    return *m_places.insert(title, static_cast<int>(m_titles.size()) - 1);
}

CommandLogEntry CommandLog::at(int row) const
{
    const Record &found = record(row);
    return {found.id, m_titles.at(found.title), found.output};
}

const CommandLog::Record &CommandLog::record(int row) const
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
    const Record &found = record(index.row());
    switch (role) {
    case TitleRole:
        return m_titles.at(found.title);
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
