#pragma once

#include <QtCore/qstringlist.h>

#include <algorithm>

/// Calls check with each selection of the markers and with a text that holds just these, one to a line: every
/// selection in every order. Markers must differ and must not contain each other.
template <typename Check> void forEachMarkerOrder(const QStringList &markers, const Check &check)
{
    for (quint32 selection = 0; selection < 1U << markers.size(); ++selection) {
        QStringList chosen;
        for (qsizetype i = 0; i < markers.size(); ++i) {
            if ((selection >> i & 1U) != 0) {
                chosen.append(markers[i]);
            }
        }
        std::ranges::sort(chosen);
        do {
            check(chosen, chosen.join(u'\n'));
        } while (std::ranges::next_permutation(chosen).found);
    }
}
