#pragma once

// What the fuzz targets share. Each compares a function with a second one that is written to be plain instead
// of fast, and ends the process when they differ. Both sides of a comparison are told apart by their string
// types: QString goes through the program, std::u16string through what it is compared with.

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>

/// What is done with each input, by the name of the target.
using FuzzTargets = std::map<std::string, std::function<void(QByteArrayView)>>;

[[nodiscard]] inline FuzzTargets &fuzzTargets()
{
    static FuzzTargets targets;
    return targets;
}

/// One at the end of each target's source makes it known under the name of the source.
struct FuzzTarget
{
    FuzzTarget(const char *name, const FuzzTargets::mapped_type &check)
    {
        fuzzTargets().emplace(name, check);
    }
};

/// The texts an input is made of, with a unit separator between each two; those that are not there are empty.
class FuzzedTexts
{
public:
    explicit FuzzedTexts(QByteArrayView input)
        : m_texts(QString::fromUtf8(input).split(u'\x1f'))
    {
    }

    [[nodiscard]] QString operator[](qsizetype index) const { return m_texts.value(index); }

private:
    QStringList m_texts;
};

inline bool contains(const std::u16string &text, const char16_t *part)
{
    return text.find(part) != std::u16string::npos;
}

/// Ends the process when what should hold does not.
inline void demand(bool holds, const char *claim)
{
    if (!holds) {
        static_cast<void>(std::fprintf(stderr, "not so: %s\n", claim));
        std::abort();
    }
}
