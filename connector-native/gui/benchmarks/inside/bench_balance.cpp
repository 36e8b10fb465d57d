#include "exchanges/balancesummary.h"

#include "measure/figure.h"

#include <QStringList>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 20;
constexpr qsizetype mebibyte = 1 << 20;

// What the summary of one exchange searches for, and an answer in which it is found at the very end.
const QStringList searched{u"\"status\":\"error\""_s, u"\"totalEquity\":\""_s, u"\"walletBalance\":\""_s,
                           u"\"coin\":\""_s};
constexpr auto foundAtEnd = R"("totalEquity":"12.5","walletBalance":"13","coin":"USDT"}]})"_L1;

// Members like the ones searched for, as a long answer of an exchange has them.
QString answer(qsizetype size, QLatin1StringView end)
{
    const QString item = uR"({"accountType":"UNIFIED","equity":"0.00012","usdValue":"7.31","locked":"0"},)"_s;
    const qsizetype body = size - end.size();
    return item.repeated(body / item.size() + 1).first(body) + end;
}

double summaryTime(const QString &text)
{
    Samples samples;
    for (int round = 0; round < rounds; ++round) {
        samples.add(milliseconds([&] {
            if (!balanceSummary(u"bybit"_s, text)) {
                qFatal("there is no summary");
            }
        }));
    }
    return samples.median();
}

double searchTime(const QString &text, const QStringList &members)
{
    Samples samples;
    qsizetype sum = 0;
    for (int round = 0; round < rounds; ++round) {
        samples.add(milliseconds([&] {
            for (const QString &member : members) {
                sum += text.indexOf(member);
            }
        }));
    }
    if (sum == 0) {
        qFatal("nothing was searched");
    }
    return samples.median();
}

void benchAnswer(const std::string &name, QLatin1StringView end, const QStringList &members)
{
    const QString text = answer(mebibyte, end);
    report({"balance summary of 1 MiB, " + name, "ms", summaryTime(text), {}, searchTime(text, members), {}});
}

} // namespace

int main()
{
    benchAnswer("members at its end", foundAtEnd, searched);
    // The first member that is not there ends the search.
    benchAnswer("no member", "]}"_L1, searched.first(2));
    constexpr int times = 8;
    const double small = summaryTime(answer(mebibyte, foundAtEnd));
    const double large = summaryTime(answer(times * mebibyte, foundAtEnd)) / times;
    report({"balance summary: 8 MiB against 1 MiB, per MiB", "ms", large, {}, small, atMostTimes(1.3)});
    return EXIT_SUCCESS;
}
