#pragma once

#include <QFont>
#include <QRawFont>
#include <QString>
#include <QTextLayout>

#include <map>
#include <memory>
#include <vector>

class QPainter;

/// A stretch of a row, from its left to its right end.
struct RowSpan
{
    qreal left = 0;
    qreal right = 0;

    friend bool operator==(const RowSpan &, const RowSpan &) = default;
};

/// The length of the line end at a position of a text; 0 if there is none.
[[nodiscard]] qsizetype lineEndAt(QStringView text, qsizetype position);

/// The rows in which a text is shown: its lines, wrapped between words, or anywhere in a word that is wider
/// than a row. All rows are equally high. Wrapping a text only finds where its rows begin; a row is laid out
/// when it is first asked about. Positions are positions of the text, lengths are in logical pixels. Main
/// thread only.
class TextRows
{
public:
    void setFont(const QFont &font);
    /// Without a width each line is one row.
    void wrap(const QString &text, qreal width);

    [[nodiscard]] const QString &text() const { return m_text; }
    /// There is always a row; an empty one follows a line end at the end of the text.
    [[nodiscard]] qsizetype count() const { return static_cast<qsizetype>(m_rows.size()); }
    [[nodiscard]] qreal rowHeight() const { return m_measures.rowHeight; }
    /// The row that a position belongs to: where two rows meet, the second.
    [[nodiscard]] qsizetype rowOf(qsizetype position) const;
    [[nodiscard]] qsizetype start(qsizetype row) const { return at(row).start; }
    /// Where the next row starts; behind the text for the last row.
    [[nodiscard]] qsizetype next(qsizetype row) const;
    /// Where the line end of the row begins, or the next row if the line goes on there.
    [[nodiscard]] qsizetype end(qsizetype row) const;
    [[nodiscard]] bool isRightToLeft(qsizetype row) const { return at(row).rightToLeft; }

    /// Where the text cursor stands at a position of the row.
    [[nodiscard]] qreal xOf(qsizetype row, qsizetype position) const;
    [[nodiscard]] qsizetype positionAt(
        qsizetype row, qreal x, QTextLine::CursorPosition kind = QTextLine::CursorBetweenCharacters) const;
    /// The visual stretches of the characters from one position of the row to another.
    [[nodiscard]] std::vector<RowSpan> spans(qsizetype row, qsizetype from, qsizetype to) const;
    /// Uses the painter's pen; the point is the row's top left corner.
    void draw(QPainter &painter, qsizetype row, QPointF topLeft) const;
    /// Frees the memory of all layouts but those of a range of rows.
    void keepLayouts(qsizetype first, qsizetype last) const;

private:
    struct Row
    {
        qsizetype start = 0;
        bool continues = false; ///< It is laid out together with the row before it.
        bool rightToLeft = false;
    };
    /// Of a font.
    struct Measures
    {
        qreal advance = 1; ///< Of each printable character of ASCII; 0 if they differ.
        qreal rowHeight = 1;
        qreal baseline = 1;
        bool hasLetters = false; ///< For those characters, without another font.
    };
    struct Line
    {
        QTextLine line;
        const QTextLayout *layout = nullptr;
        qsizetype start = 0; ///< The position of the text at which the layout begins.
    };

    [[nodiscard]] static Measures measure(const QFont &font);
    [[nodiscard]] const Row &at(qsizetype row) const { return m_rows[static_cast<std::size_t>(row)]; }
    void wrapLine(qsizetype start, qsizetype end, bool plain);
    [[nodiscard]] qsizetype wrapPlainRow(qsizetype start, qsizetype end);
    [[nodiscard]] qsizetype wrapBlock(qsizetype start, qsizetype end, bool rightToLeft);
    [[nodiscard]] bool isDrawnByColumns(qsizetype row) const;
    [[nodiscard]] bool isPlainRow(qsizetype start, qsizetype end) const;
    [[nodiscard]] qsizetype fitting(qsizetype start, qsizetype end) const;
    [[nodiscard]] std::unique_ptr<QTextLayout> layOut(qsizetype start, qsizetype end, bool rightToLeft,
                                                      bool wrapped) const;
    [[nodiscard]] Line line(qsizetype row) const;
    [[nodiscard]] std::vector<RowSpan> piecesOf(qsizetype row, qsizetype from, qsizetype to) const;

    QFont m_font;
    QRawFont m_letters;
    Measures m_measures;
    QString m_text;
    qreal m_width = 0;
    qsizetype m_columns = 0;
    std::vector<Row> m_rows{Row()};
    mutable std::map<qsizetype, std::unique_ptr<QTextLayout>> m_layouts; ///< By the first of their rows.
};
