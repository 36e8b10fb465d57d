#include "balances.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

    constexpr std::string_view bybitBalance =
        R"({"retCode":0,"retMsg":"OK","result":{"list":[{"accountType":"UNIFIED",)"
        R"("totalEquity":"15324.87214410","totalAvailableBalance":"13110.40220817",)"
        R"("totalWalletBalance":"15210.33101992","totalPerpUPL":"114.54112418","totalInitialMargin":"420.11",)"
        R"("accountIMRate":"0.0274","accountMMRate":"0.0061","coin":[{"equity":"15324.87214410",)"
        R"("usdValue":"15324.87214410","walletBalance":"15210.33101992","locked":"0","borrowAmount":"0",)"
        R"("unrealisedPnl":"114.54112418","cumRealisedPnl":"-38.20117","marginCollateral":true,)"
        R"("coin":"USDT"}]}]},"retExtInfo":{},"time":1718000000000})";

    constexpr std::string_view okxBalance =
        R"({"code":"0","data":[{"adjEq":"8120.4417","borrowFroz":"0","details":[{"availBal":"7645.118204",)"
        R"("availEq":"7645.118204","cashBal":"8120.441700","ccy":"USDT","crossLiab":"0","disEq":"8120.12",)"
        R"("eq":"8120.4417","eqUsd":"8120.12","frozenBal":"475.323496","imr":"","isoEq":"0","liab":"0",)"
        R"("ordFrozen":"475.3","stgyEq":"0","twap":"0","uTime":"1718000000000","upl":"0"}],"imr":"0",)"
        R"("isoEq":"0","mgnRatio":"","mmr":"0","notionalUsd":"0","ordFroz":"475.3","totalEq":"8120.12",)"
        R"("uTime":"1718000000000","upl":"0"}],"msg":""})";

    constexpr std::string_view gateBalance =
        R"({"user":40718,"currency":"USDT","total":"2480.615500","unrealised_pnl":"12.80",)"
        R"("position_margin":"180.25","order_margin":"40","available":"2260.365500","point":"0","bonus":"0",)"
        R"("in_dual_mode":false,"cross_available":"2260.365500","history":{"dnw":"2500","pnl":"-12.4",)"
        R"("fee":"-6.98","fund":"-0.0045","bonus_dnw":"0"},"enable_tiered_mm":true})";

    constexpr std::string_view bingxBalance =
        R"({"code":0,"msg":"","data":{"balance":{"userId":"90210000000000001","asset":"USDT",)"
        R"("balance":"940.5512","equity":"951.0371","unrealizedProfit":"10.4859","realisedProfit":"3.1100",)"
        R"("availableMargin":"815.7420","usedMargin":"124.8092","freezedMargin":"10.0000"}}})";

    // The only exchange here that writes amounts as bare numbers.
    constexpr std::string_view kucoinBalance =
        R"({"code":"200000","data":{"debtRatio":0,"accounts":[{"currency":"USDT","totalBalance":1333.75,)"
        R"("availableBalance":1250.75,"holdBalance":83.0,"liability":0,"maxBorrowSize":0}]}})";

    constexpr std::string_view bitgetBalance =
        R"({"code":"00000","data":[{"marginCoin":"USDT","locked":"12.5","available":"3071.90460000",)"
        R"("crossedMaxAvailable":"3059.4046","isolatedMaxAvailable":"3059.4046","maxTransferOut":"3059.4046",)"
        R"("accountEquity":"3140.22810000","usdtEquity":"3140.228100000000","btcEquity":"0.048311201558",)"
        R"("crossedRiskRate":"0","unrealizedPL":"68.3235","coupon":"0","assetMode":"single"}],)"
        R"("msg":"success","requestTime":1718000000000})";

    constexpr std::array exchanges = {
        Exchange{"bybit", false, bybitBalance},  Exchange{"okx", true, okxBalance},
        Exchange{"gate", false, gateBalance},    Exchange{"bingx", false, bingxBalance},
        Exchange{"kucoin", true, kucoinBalance}, Exchange{"bitget", true, bitgetBalance},
    };

} // namespace

const Exchange *exchangeWithId(std::string_view id)
{
    const auto found = std::ranges::find(exchanges, id, &Exchange::id);
    return found == exchanges.end() ? nullptr : &*found;
}

} // namespace simulator
