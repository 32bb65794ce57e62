// Texts that strangers choose on the screens: what shows is the text that was given, and none of it becomes a
// link, an image or another form of the letters.
#include "fuzzing.h"

#include "brovik/gui/gui.h"
#include "brovik/shell/changelog_entry.h"

#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickStyle>
#include <QTextBlock>
#include <QTextDocument>

// The private headers of Qt shadow names of their own.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wshadow"
#include <private/qquicktext_p.h>
#include <private/qquicktext_p_p.h>
#pragma clang diagnostic pop

#include <algorithm>
#include <map>
#include <vector>

namespace {

constexpr char16_t endsText = 0x9c; ///< For a label of plain text.

QObject *screen = nullptr; ///< Lives as long as the process.

/// What looks the same in markup, which has its own signs for blanks and for the end of a line.
QString withoutForms(QString text)
{
    constexpr char16_t frameBegins = 0xfdd0;
    constexpr char16_t frameEnds = 0xfdd1;
    constexpr char16_t lineSeparator = 0x2028;
    constexpr char16_t paragraphSeparator = 0x2029;
    for (QChar &letter : text) {
        if (letter == lineSeparator || letter == paragraphSeparator) {
            letter = u'\n';
        } else if (letter.isSpace() && letter != u'\n') {
            letter = u' ';
        } else if (letter.isNull() || letter == endsText || letter == frameBegins || letter == frameEnds) {
            letter = QChar::ReplacementCharacter;
        }
    }
    return text;
}

/// What stands around a text in markup loses its blanks beside the end of a line.
QString withoutEdges(const QString &text)
{
    QStringList lines = text.split(u'\n');
    std::transform(lines.begin(), lines.end(), lines.begin(),
                   [](const QString &line) { return line.trimmed(); });
    return lines.join(u'\n').trimmed();
}

QString shortened(const QString &text)
{
    constexpr qsizetype limit = 200;
    return text.size() <= limit ? text : text.left(limit) + QChar(0x2026);
}

QString inOneLine(QString text)
{
    for (const char16_t end : u"\n\v\f\r\u0085\u2028\u2029") {
        text.replace(QChar(end), end != 0 ? QChar(0x2424) : QChar(0));
    }
    return text;
}

/// The texts that a part of the screen has to show, by its name.
std::vector<QString> expectedTexts(const QString &name, const QString &given)
{
    if (name == QStringLiteral("inOneLine")) {
        return {inOneLine(given)};
    }
    if (name == QStringLiteral("shortened")) {
        return {shortened(given)};
    }
    if (name == QStringLiteral("login")) {
        return {QStringLiteral("Passwort für: ") + shortened(given)};
    }
    if (name == QStringLiteral("inAQuestion")) {
        return {QStringLiteral("Soll '") + given + QStringLiteral("' weg?")};
    }
    if (name == QStringLiteral("address")) {
        return {given + (given.isEmpty() ? QString() : QStringLiteral(" (") + given + QStringLiteral(")")) +
                QStringLiteral(": ") + given};
    }
    if (name == QStringLiteral("changelog")) {
        return {QStringLiteral("%1 / %1 - %1 - %1 - Dringlichkeit: %1").replace(QStringLiteral("%1"), given),
                given};
    }
    return {given};
}

void checkFormat(const QTextCharFormat &format, const QString &text)
{
    require(!format.isAnchor() && format.anchorHref().isEmpty(), "no link arises", text);
    require(!format.isImageFormat() && !format.isTableFormat() && !format.isListFormat(), "no image arises",
            text);
}

QString textOfDocument(const QTextDocument &document)
{
    for (QTextBlock block = document.begin(); block != document.end(); block = block.next()) {
        require(block.textList() == nullptr, "no list arises", document.toPlainText());
        for (auto fragment = block.begin(); fragment != block.end(); ++fragment) {
            checkFormat(fragment.fragment().charFormat(), document.toPlainText());
        }
    }
    return document.toPlainText();
}

QString textOfMarkup(const QString &markup)
{
    QTextDocument document;
    document.setHtml(markup);
    return textOfDocument(document);
}

/// What a label has laid out, whatever the form of its text.
QString shownBy(QQuickText &label)
{
    const auto &text = *static_cast<QQuickTextPrivate *>(QQuickItemPrivate::get(&label));
    if (text.richText) {
        // The label's own document is private to it, and made of this text.
        return textOfMarkup(text.text);
    }
    require(!text.extra.isAllocated() || text.extra->imgTags.isEmpty(), "no image arises", text.text);
    for (const QTextLayout::FormatRange &range : text.layout.formats()) {
        checkFormat(range.format, text.text);
    }
    return text.layout.text();
}

void collectShown(QQuickItem &item, std::vector<QString> &shown)
{
    if (auto *const label = qobject_cast<QQuickText *>(&item)) {
        shown.push_back(withoutForms(shownBy(*label)));
    }
    for (QQuickItem *child : item.childItems()) {
        collectShown(*child, shown);
    }
}

void checkPart(QQuickItem &part, const QString &given)
{
    std::vector<QString> shown;
    collectShown(part, shown);
    // Nothing beside nothing leaves blanks in the markup, of which one shows.
    if (given.isEmpty()) {
        return;
    }
    if (part.objectName() == QStringLiteral("address") || part.objectName() == QStringLiteral("changelog")) {
        std::transform(shown.begin(), shown.end(), shown.begin(), withoutEdges);
    }
    const auto isShown = [&](const QString &text) {
        return std::find(shown.begin(), shown.end(), text) != shown.end();
    };
    for (const QString &text : expectedTexts(part.objectName(), given)) {
        const QString expected = withoutForms(text);
        require(isShown(expected) || isShown(withoutEdges(expected)), "what shows is what was given",
                part.objectName(), given, QStringList(shown.begin(), shown.end()));
    }
}

/// The pieces one after the other; those that end a line have lost the end of it.
void checkPieces(const QStringList &pieces, QString given)
{
    given.replace(QChar(endsText), QChar::ReplacementCharacter);
    qsizetype place = 0;
    for (const QString &piece : pieces) {
        require(QStringView(given).mid(place).startsWith(piece), "the pieces are the text", given, piece);
        place += piece.size();
        place += place < given.size() && given.at(place) == u'\n' ? 1 : 0;
    }
    require(place == given.size(), "the pieces are all of the text", given);
}

QString consumeShown(FuzzedDataProvider &data)
{
    const QString text = consumeText(data, 300);
    // Some texts are longer than the places that show them.
    return data.ConsumeIntegralInRange(0, 15) == 0 ? text.repeated(data.ConsumeIntegralInRange(1, 12)) : text;
}

} // namespace

void fuzzingBegins()
{
    QQuickStyle::setStyle(QStringLiteral("Material"));
    auto *const engine = new QQmlApplicationEngine; // lives as long as the process, as what it makes
    engine->addImportPath(QStringLiteral(":/"));
    QQmlComponent component(engine, QUrl::fromLocalFile(QStringLiteral(KUBELOR_FUZZ_DIR "/ShownTexts.qml")));
    screen = component.create();
    require(screen != nullptr, "the screen can be made", component.errorString());
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const QString given = consumeShown(data);
    ChangelogEntry entry;
    entry.setName(given);
    entry.setDistribution(given);
    entry.setVersion(given);
    entry.setDate(given);
    entry.setUrgencyStr(given);
    entry.setChanges({given});
    screen->setProperty("given", given);
    screen->setProperty("entry", QVariant::fromValue(&entry));

    for (QQuickItem *part : qobject_cast<QQuickItem *>(screen)->childItems()) {
        if (!part->objectName().isEmpty()) {
            checkPart(*part, given);
        }
    }
    require(withoutForms(textOfMarkup(screen->property("escaped").toString())) == withoutForms(given),
            "escaped is what was given", given, textOfMarkup(screen->property("escaped").toString()));
    const auto *const axis = screen->property("axis").value<QObject *>();
    const QStringList labels = axis->property("categoriesLabels").toStringList();
    require(labels.size() == 2, "each name has a label", labels);
    for (const QString &label : labels) {
        require(withoutForms(textOfMarkup(label)).remove(QChar(0x200b)) ==
                    withoutForms(given).remove(QChar(0x200b)),
                "an axis shows what was given", given, label);
    }
    checkPieces(screen->property("pieces").toStringList(), given);
    screen->setProperty("entry", QVariant::fromValue<ChangelogEntry *>(nullptr));
    QCoreApplication::processEvents();
    return 0;
}
