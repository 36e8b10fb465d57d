#include "support/testprogram.h"

#include <QtCore/qdir.h>
#include <QtCore/qdiriterator.h>
#include <QtCore/qfile.h>
#include <QtCore/qregularexpression.h>
#include <QtGui/qcolor.h>

using namespace Qt::StringLiterals;

namespace {

const QString compiledDirectory = u":/BrindlecoveConnectorGUI/ui/"_s;
constexpr auto styleFile = "Style.qml"_L1;

QStringList qmlFiles()
{
    const QDir directory(QStringLiteral(UI_DIRECTORY));
    QStringList files;
    for (QDirIterator file(directory.path(), {u"*.qml"_s}, QDir::Files, QDirIterator::Subdirectories);
         file.hasNext();) {
        files.append(directory.relativeFilePath(file.next()));
    }
    files.sort();
    return files;
}

QString contentOf(const QString &name)
{
    QFile file(QStringLiteral(UI_DIRECTORY "/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString withoutComments(QString source)
{
    static const QRegularExpression comment(u"//[^\\n]*|/\\*.*?\\*/"_s,
                                            QRegularExpression::DotMatchesEverythingOption);
    return source.remove(comment);
}

// What stands between an opening brace and its closing one, nested objects and functions left out.
QString ownLines(const QString &source, qsizetype afterBrace)
{
    QString own;
    int depth = 1;
    for (qsizetype at = afterBrace; at < source.size() && depth > 0; ++at) {
        const QChar character = source.at(at);
        depth += character == u'{' ? 1 : character == u'}' ? -1 : 0;
        if (depth == 1) {
            own += character;
        }
    }
    return own;
}

// Each text element that does not say of itself that it is plain, and each format that is another one.
QStringList markupTexts(const QString &source)
{
    static const QRegularExpression element(u"\\b(Text|TextEdit|TextArea)\\s*\\{"_s);
    static const QRegularExpression format(u"textFormat:\\s*(\\S+)"_s);
    static const QRegularExpression plain(u"textFormat:\\s*(Text|TextEdit)\\.PlainText\\b"_s);
    QStringList found;
    for (const QRegularExpressionMatch &match : element.globalMatch(source)) {
        if (!plain.match(ownLines(source, match.capturedEnd())).hasMatch()) {
            found.append(match.captured());
        }
    }
    for (const QRegularExpressionMatch &match : format.globalMatch(source)) {
        if (!match.captured(1).endsWith(u".PlainText"_s)) {
            found.append(match.captured());
        }
    }
    return found;
}

// Qt's own size would be one in points, which need not be a whole number of pixels.
QStringList textsWithoutSize(const QString &source)
{
    static const QRegularExpression element(u"\\b(Text|TextInput|OutputView)\\s*\\{"_s);
    QStringList found;
    for (const QRegularExpressionMatch &match : element.globalMatch(source)) {
        if (!ownLines(source, match.capturedEnd()).contains(u"font.pixelSize: Style."_s)) {
            found.append(match.captured());
        }
    }
    return found;
}

QStringList untypedProperties(const QString &source)
{
    static const QRegularExpression property(u"property\\s+(var|variant)\\s+(\\w+)"_s);
    QStringList found;
    for (const QRegularExpressionMatch &match : property.globalMatch(source)) {
        found.append(match.captured(2));
    }
    return found;
}

QStringList colourLiterals(const QString &source)
{
    static const QRegularExpression made(u"\\bQt\\.(rgba|hsla|hsva|color|darker|lighter|tint|alpha)\\b"_s);
    static const QRegularExpression quoted(u"\"([^\"]*)\""_s);
    QStringList found;
    for (const QRegularExpressionMatch &match : made.globalMatch(source)) {
        found.append(match.captured());
    }
    for (const QRegularExpressionMatch &match : quoted.globalMatch(source)) {
        const QString text = match.captured(1);
        if (QColor::isValidColorName(text) && text != "transparent"_L1) {
            found.append(text);
        }
    }
    return found;
}

// A factor is no length.
QStringList lengthLiterals(const QString &source)
{
    static const QRegularExpression length(u"\\b(spacing|radius|margins|pixelSize|\\w*(Spacing|Margin|"
                                           u"Padding|padding|Width|width|Height|height))"
                                           "\\s*:\\s*-?(?![0-9.]+\\s*\\*)([1-9]|0\\.)"_s);
    QStringList found;
    for (const QRegularExpressionMatch &match : length.globalMatch(source)) {
        found.append(match.captured());
    }
    return found;
}

} // namespace

// Rules that hold for each QML file of the window.
class TestQmlRules : public QObject
{
    Q_OBJECT

    static void addFiles()
    {
        QTest::addColumn<QString>("file");
        for (const QString &file : qmlFiles()) {
            QTest::newRow(qPrintable(file)) << file;
        }
    }

private slots:
    void aBrokenRuleIsFound()
    {
        QCOMPARE(markupTexts(u"Item { Text { text: a } }"_s).size(), 1);
        QCOMPARE(markupTexts(u"TextEdit { Item { textFormat: TextEdit.PlainText } }"_s).size(), 1);
        QCOMPARE(markupTexts(u"Label { textFormat: Text.RichText }"_s).size(), 1);
        QCOMPARE(markupTexts(u"Text { text: a; textFormat: Text.PlainText }"_s).size(), 0);
        QCOMPARE(textsWithoutSize(u"Text { Item { font.pixelSize: Style.bodySize } }"_s).size(), 1);
        QCOMPARE(textsWithoutSize(u"TextInput { font.pixelSize: Style.bodySize }"_s).size(), 0);
        QCOMPARE(untypedProperties(u"required property var data\nproperty int i"_s), QStringList{u"data"_s});
        QCOMPARE(colourLiterals(u"a: \"#fff\"; b: Qt.rgba(0, 0, 0, 1); c: \"tomato\"; d: \"ready\""_s).size(),
                 3);
        QCOMPARE(
            lengthLiterals(u"spacing: 6; border.width: 1; leftPadding: -2; width: a.width; x: 0"_s).size(),
            3);
        QCOMPARE(withoutComments(u"a // b\nc /* d\n */ e"_s), u"a \nc  e"_s);
    }

    void everyFileOfTheModuleIsLookedAt()
    {
        QStringList compiled;
        for (QDirIterator file(compiledDirectory, {u"*.qml"_s}, QDir::Files, QDirIterator::Subdirectories);
             file.hasNext();) {
            compiled.append(file.next().mid(compiledDirectory.size()));
        }
        compiled.sort();
        QCOMPARE(qmlFiles(), compiled);
    }

    void textsArePlain_data() { addFiles(); }

    void textsArePlain()
    {
        QFETCH(const QString, file);
        const QString source = withoutComments(contentOf(file));
        QVERIFY(!source.isEmpty());
        QCOMPARE(markupTexts(source), QStringList());
    }

    void textsHaveASizeOfTheStyle_data() { addFiles(); }

    void textsHaveASizeOfTheStyle()
    {
        QFETCH(const QString, file);
        QCOMPARE(textsWithoutSize(withoutComments(contentOf(file))), QStringList());
    }

    void propertiesAreTyped_data() { addFiles(); }

    void propertiesAreTyped()
    {
        QFETCH(const QString, file);
        // An entry of a list of values reaches its delegate as no type QML could name.
        const QStringList allowed =
            file == "sections/ExchangeTabs.qml"_L1 ? QStringList{u"modelData"_s} : QStringList();
        QCOMPARE(untypedProperties(withoutComments(contentOf(file))), allowed);
    }

    void coloursStandInTheStyle_data() { addFiles(); }

    void coloursStandInTheStyle()
    {
        QFETCH(const QString, file);
        const QStringList literals = colourLiterals(withoutComments(contentOf(file)));
        QCOMPARE(literals.isEmpty(), file != styleFile);
    }

    void lengthsStandInTheStyle_data() { addFiles(); }

    void lengthsStandInTheStyle()
    {
        QFETCH(const QString, file);
        if (file != styleFile) {
            QCOMPARE(lengthLiterals(withoutComments(contentOf(file))), QStringList());
        }
    }

    void theStyleNamesNoColourButWhite()
    {
        QStringList names = colourLiterals(withoutComments(contentOf(styleFile)));
        for (const QString &allowed : {u"white"_s, u"Qt.rgba"_s, u"Qt.alpha"_s, u"Qt.darker"_s}) {
            names.removeAll(allowed);
        }
        QCOMPARE(names, QStringList());
    }
};

static const TestClass<TestQmlRules> testQmlRules("tst_qmlrules");

#include "tst_qmlrules.moc"
