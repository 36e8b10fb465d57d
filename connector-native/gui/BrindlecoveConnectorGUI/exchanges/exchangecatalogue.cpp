#include "exchanges/exchangecatalogue.h"

#include <QHashFunctions>

#include <algorithm>

using namespace Qt::StringLiterals;

size_t qHash(const ExchangeItem &item, size_t seed) noexcept
{
    return qHashMulti(seed, item.id, item.name, item.needsPassphrase);
}

const QList<ExchangeItem> &exchangeCatalogue()
{
    static const QList<ExchangeItem> catalogue{
        {u"bybit"_s, u"Bybit"_s, false}, {u"okx"_s, u"OKX"_s, true},       {u"gate"_s, u"Gate"_s, false},
        {u"bingx"_s, u"BingX"_s, false}, {u"kucoin"_s, u"KuCoin"_s, true}, {u"bitget"_s, u"Bitget"_s, true},
    };
    return catalogue;
}

const ExchangeItem &exchangeOrFirst(const QString &id)
{
    const QList<ExchangeItem> &catalogue = exchangeCatalogue();
    const auto found = std::ranges::find(catalogue, id, &ExchangeItem::id);
    return found == catalogue.end() ? catalogue.first() : *found;
}
