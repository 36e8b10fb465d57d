#include "ui/accessibility/outcome.h"

#include <utility>

void Outcome::setNow(const QVariant &now)
{
    if (m_now != now) {
        m_now = now;
        emit nowChanged();
    }
}

void Outcome::begin()
{
    if (!m_told.isValid()) {
        m_told = m_now;
    }
}

bool Outcome::takeChange()
{
    return std::exchange(m_told, m_now) != m_now;
}
