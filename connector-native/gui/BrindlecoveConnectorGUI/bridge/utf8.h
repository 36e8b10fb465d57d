#pragma once

#include <QByteArrayView>
#include <QString>

/// The text of UTF-8 bytes. Never fails: each maximal ill-formed sequence becomes one U+FFFD, as Unicode
/// recommends (chapter 3, table 3-8), so E2 82 41 gives U+FFFD and 'A'. A leading byte-order mark and NULs
/// are kept. Any thread.
[[nodiscard]] QString decodeUtf8(QByteArrayView bytes);
