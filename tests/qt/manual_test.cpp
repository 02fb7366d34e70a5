// The manual against the program: what a person can see, press, read or be told stands in it, in both languages. The
// lists come from the program's own data and sources, so that a panel, a message or a report without a word in the
// manual is found here.
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QTextBlock>
#include <QTextDocument>

#include "core/file_name_parts.h"
#include "core/vocabulary.h"
#include "desk/desk.h"
#include "objects/control_rules.h"
#include "qt/help_window.h"
#include "qt/qt_text.h"
#include "qt/shortcuts.h"
#include "support/samples.h"
#include "window_test.h"

using namespace relvane;
using namespace relvane::qt;

namespace {

const QStringList languages{QStringLiteral("ja"), QStringLiteral("en")};

QString contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    return QString::fromUtf8(file.readAll());
}

QString inProject(const char* path) {
    return QString::fromStdString((test::sourceFolder() / path).string());
}

QStringList filesOf(const char* folder, const char* pattern) {
    const QDir found(inProject(folder));
    QStringList paths;
    for (const QString& name : found.entryList({QLatin1String(pattern)}, QDir::Files, QDir::Name)) {
        paths << found.filePath(name);
    }
    return paths;
}

// What stands in the file: tags within a line go, all others end a line.
QString textOf(const QString& html) {
    static const QRegularExpression inLine(QStringLiteral("</?(?:a|b|code|span)(?: [^>]*)?>"));
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    QString text = html;
    text.remove(inLine);
    text.replace(tag, QStringLiteral("\n"));
    return text.replace(QStringLiteral("&lt;"), QStringLiteral("<"))
        .replace(QStringLiteral("&gt;"), QStringLiteral(">"))
        .replace(QStringLiteral("&amp;"), QStringLiteral("&"));
}

QStringList allOf(const QString& text, const char* pattern) {
    QStringList found;
    const QRegularExpression expression(QString::fromUtf8(pattern),
                                        QRegularExpression::UseUnicodePropertiesOption |
                                            QRegularExpression::DotMatchesEverythingOption);
    for (auto each = expression.globalMatch(text); each.hasNext();) {
        found << each.next().captured(1);
    }
    return found;
}

bool isJapanese(const QString& text) {
    static const QRegularExpression kanaOrKanji(
        QStringLiteral("[\\x{3041}-\\x{30fe}\\x{4e00}-\\x{9fff}\\x{ff66}-\\x{ff9f}]"));
    return text.contains(kanaOrKanji);
}

// A text in the pieces that the program joins: at line ends and at places for values. A key or a pattern of files in
// parentheses behind a text is none of its words.
QStringList piecesOf(const QString& text) {
    static const QRegularExpression joints(QStringLiteral("%\\d|\\\\[rn]|\\n| \\([ -~]*\\)$"));
    QStringList pieces;
    for (const QString& piece : text.split(joints, Qt::SkipEmptyParts)) {
        if (isJapanese(piece)) {
            pieces << piece.trimmed();
        }
    }
    return pieces;
}

// The sources of what is shown to a person, but for the error reports, which have tables of their own.
QString sourcesOfMessages() {
    QString sources;
    for (const char* folder : {"src/core", "src/output", "src/objects", "src/code", "src/support",
                               "src/persist", "src/capture", "src/desk", "src/platform/qt", "app"}) {
        for (const QString& path : filesOf(folder, "*.cpp")) {
            if (!path.endsWith(QLatin1String("error_report.cpp")) &&
                !path.endsWith(QLatin1String("panel_events.cpp")) &&   // hints are read off the panel
                !path.endsWith(QLatin1String("japanese_texts.cpp"))) { // the toolkit's own dialogs
                sources += contentOf(path);
            }
        }
    }
    return sources;
}

// The lines of the error boxes that the commands of today can show: those that can be reached from the places that the
// sources name, through the tables of rules and boxes.
QStringList reachableErrorLines() {
    const QString tables = contentOf(inProject("src/core/error_report.cpp"));
    QHash<QString, QString> definitions;
    static const QRegularExpression definition(
        QStringLiteral(
            "(?:const|constexpr) Error(?:Box|Rule|Place) (\\w+)(?:\\[\\])?\\s*(=\\s*)?(\\{.*?\\};)"),
        QRegularExpression::DotMatchesEverythingOption);
    for (auto each = definition.globalMatch(tables); each.hasNext();) {
        const auto found = each.next();
        definitions.insert(found.captured(1), found.captured(3));
    }
    QStringList open = allOf(sourcesOfMessages(), "places::(\\w+)");
    QSet<QString> seen;
    QStringList lines;
    while (!open.isEmpty()) {
        const QString name = open.takeLast();
        if (seen.contains(name) || !definitions.contains(name)) {
            continue;
        }
        seen << name;
        lines << allOf(definitions[name], "u\"([^\"]+)\"");
        open << allOf(definitions[name], "(\\w+)");
    }
    return lines;
}

QString captionOf(const Control& control) {
    if (const auto* button = dynamic_cast<const CommandButton*>(&control)) {
        return toQString(button->Caption.get());
    }
    if (const auto* box = dynamic_cast<const CheckBox*>(&control)) {
        return toQString(box->Caption.get());
    }
    if (const auto* option = dynamic_cast<const OptionButton*>(&control)) {
        return toQString(option->Caption.get());
    }
    if (const auto* frame = dynamic_cast<const Frame*>(&control)) {
        return toQString(frame->Caption.get());
    }
    if (const auto* label = dynamic_cast<const Label*>(&control)) {
        return toQString(label->Caption.get());
    }
    if (const auto* entry = dynamic_cast<const MenuItem*>(&control)) {
        return toQString(entry->Caption.get());
    }
    return {};
}

void collectStrings(const QJsonValue& value, const QString& key, const QSet<QString>& wanted,
                    QStringList& found) {
    if (value.isString() && wanted.contains(key)) {
        found << value.toString();
    } else if (value.isArray()) {
        for (const auto& each : value.toArray()) {
            collectStrings(each, key, wanted, found);
        }
    } else if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (auto each = object.begin(); each != object.end(); ++each) {
            collectStrings(each.value(), each.key(), wanted, found);
        }
    }
}

} // namespace

// Says in readable letters what the manual lacks.
#define NOTHING_MISSING(texts)                                                                               \
    do {                                                                                                     \
        const QString lacking = missing(texts);                                                              \
        QVERIFY2(lacking.isEmpty(), qPrintable(lacking));                                                    \
    } while (false)

class ManualTest : public QObject {
    Q_OBJECT

    QString path_ = QString::fromStdString((test::buildFolder() / "share/relvane/Relvane.hlp").string());
    QString html_;
    QHash<QString, QString> text_; // by language

    // What is missing in one of the languages, as a sentence.
    QString missing(const QStringList& wanted) {
        QStringList sentences;
        for (const QString& text : wanted) {
            for (const QString& language : languages) {
                if (!text_[language].contains(text)) {
                    sentences << language + QStringLiteral(": ") + text;
                }
            }
        }
        sentences.removeDuplicates();
        return sentences.join(QStringLiteral("; "));
    }

private slots:
    void initTestCase() {
        html_ = contentOf(path_);
        const auto english = html_.indexOf(QStringLiteral("<a name=\"en\">"));
        QVERIFY(english > 0);
        text_[languages[0]] = textOf(html_.left(english));
        text_[languages[1]] = textOf(html_.mid(english));
    }

    void everyCaptionIsExplained() {
        Platform platform;
        Desk desk(platform, {});
        QStringList captions;
        for (Form* form : desk.forms()) {
            for (const Control* control : form->controls()) {
                const QString caption = captionOf(*control);
                static const QRegularExpression letters(QStringLiteral("\\w"),
                                                        QRegularExpression::UseUnicodePropertiesOption);
                if (control->isShown() && caption.contains(letters)) {
                    captions << caption;
                }
            }
        }
        QVERIFY(captions.contains(QStringLiteral("ﾘﾝｸﾃｰﾌﾞﾙ対象外")));
        QVERIFY(captions.contains(QStringLiteral("任意の文字を印字する")));
        NOTHING_MISSING(captions);
    }

    void everyHintIsExplained() {
        Platform platform;
        Desk desk(platform, {});
        QStringList hints;
        for (Control* control : desk.frmRelvane.controls()) {
            if (control->isShown() && control->MouseMove) {
                desk.frmRelvane.txtMesege.Caption = u"";
                control->MouseMove();
                const QString hint = toQString(desk.frmRelvane.txtMesege.Caption.get());
                if (!hint.isEmpty()) {
                    hints << hint;
                }
            }
        }
        QVERIFY(hints.contains(QStringLiteral("表紙を印刷します。")));
        NOTHING_MISSING(hints);
    }

    void everyKeyOfTheMainWindowIsListed() {
        Platform platform;
        Desk desk(platform, {});
        QStringList keys;
        for (const Shortcut& shortcut : mainWindowShortcuts()) {
            const Control* control = desk.frmRelvane.find(shortcut.name);
            QVERIFY2(control != nullptr, shortcut.name);
            if (control->isShown()) {
                keys << QString::fromLatin1(shortcut.keys);
            }
        }
        QVERIFY(keys.contains(QStringLiteral("F1")));
        NOTHING_MISSING(keys);
    }

    void everyMessageIsExplained() {
        static const QRegularExpression isMessage(QStringLiteral("(。|？|取得中|しました|します)( \\()?$"));
        QStringList messages;
        for (const QString& text : allOf(sourcesOfMessages(), "u\"((?:[^\"\\\\]|\\\\.)*)\"")) {
            for (const QString& piece : piecesOf(text)) {
                if (piece.contains(isMessage)) {
                    messages << piece;
                }
            }
        }
        QVERIFY(messages.contains(QStringLiteral("データベースを選択して下さい。")));
        QVERIFY(messages.contains(QStringLiteral("印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。")));
        NOTHING_MISSING(messages);
    }

    void everyErrorBoxOfTheCommandsIsExplained() {
        const QStringList lines = reachableErrorLines();
        QVERIFY(lines.contains(QStringLiteral("場所とｴﾗｰNoを控えメールをお願いします。")));
        QVERIFY(lines.contains(QStringLiteral("テーブル情報")));
        NOTHING_MISSING(lines);
    }

    void theTextsOfPreviewPrintingAndHelpAreExplained() {
        QStringList texts;
        for (const char* file :
             {"preview_window.cpp", "print_dialog.cpp", "help_window.cpp", "search_bar.cpp"}) {
            const QString source = contentOf(inProject("src/platform/qt/") + QLatin1String(file));
            for (const QString& text : allOf(source, "tr\\(\\s*\"((?:[^\"\\\\]|\\\\.)*)\"")) {
                texts << piecesOf(text);
            }
        }
        QVERIFY(texts.contains(QStringLiteral("頁の幅に合わせる")));
        NOTHING_MISSING(texts);
    }

    void theTextsOfTheDialogsAreExplained() {
        QStringList texts;
        const QString source = contentOf(inProject("src/platform/qt/qt_dialogs.cpp"));
        for (const QString& text : allOf(source, "QStringLiteral\\(\"((?:[^\"\\\\]|\\\\.)*)\"")) {
            static const QRegularExpression access(QStringLiteral("\\(&\\w\\)"));
            texts << piecesOf(QString(text).remove(access));
        }
        QVERIFY(texts.contains(QStringLiteral("パスワードを入力して下さい。")));
        NOTHING_MISSING(texts);
    }

    void everyKindOfFileThatIsOfferedIsNamed() {
        QStringList extensions;
        for (const TextView extension : databaseExtensions()) {
            extensions << toQString(Text(extension));
        }
        QVERIFY(extensions.contains(QStringLiteral(".accde")));
        NOTHING_MISSING(extensions);
        const QString source = contentOf(inProject("src/core/target_selection.cpp"));
        const QStringList entries = allOf(source, "fileFilter\\(u\"([^\"(]+)");
        QVERIFY(entries.contains(QStringLiteral("Access 2007以降")));
        NOTHING_MISSING(entries);
    }

    void everyTypeOfFieldIsNamed() {
        QStringList types;
        types << allOf(contentOf(inProject("src/core/vocabulary.cpp")), "u\"([^\" ]+型)\"")
              << allOf(contentOf(inProject("src/objects/table_analysis.cpp")), "u\"([^\" ]+型)\"");
        QVERIFY(types.contains(QStringLiteral("ﾚﾌﾟﾘｹｰｼｮﾝ型")));
        QVERIFY(types.contains(QStringLiteral("集計型")));
        NOTHING_MISSING(types);
    }

    void everyCommandOfTheCommandLineIsListedWithItsOptions() {
        QString sources;
        for (const QString& path : filesOf("app/cli", "*.cpp") + filesOf("app/cli", "*.h")) {
            sources += contentOf(path);
        }
        QStringList words = allOf(sources, "[({]\"(--[a-z-]+)\"");
        QVERIFY(words.contains(QStringLiteral("--password-file")));
        const QStringList commands = allOf(sources, "\\{\"([a-z]+)\", \"(?:TARGET|NAME)[^\"]*\"");
        QVERIFY(commands.contains(QStringLiteral("image")));
        for (const QString& command : commands) {
            words << QStringLiteral("relvane-cli %1 ").arg(command);
        }
        NOTHING_MISSING(words);
    }

    void everyErrorNumberIsExplained() {
        const QString header = contentOf(inProject("src/platform/runtime_error.h"));
        const QString table = contentOf(inProject("src/platform/runtime_error.cpp"));
        static const QRegularExpression number(QStringLiteral("(\\w+) = (\\d+),"));
        QStringList numbers;
        for (auto each = number.globalMatch(header); each.hasNext();) {
            numbers << each.next().captured(2);
        }
        QVERIFY(numbers.contains(QStringLiteral("3343")));
        for (const QString& language : languages) {
            const auto chapter = html_.indexOf(QStringLiteral("<a name=\"%1-errors\">").arg(language));
            const auto end = html_.indexOf(QStringLiteral("class=\"foot\""), chapter);
            QVERIFY(chapter > 0 && end > 0);
            const QString errors = html_.mid(chapter, end - chapter);
            for (const QString& each : numbers) {
                QVERIFY2(errors.count(QStringLiteral("<tr><td>%1</td>").arg(each)) == 1, qPrintable(each));
            }
        }
        NOTHING_MISSING(allOf(table, "ErrorNumber::\\w+,\\s*u\"([^\"]+)\""));
    }

    void everyReportIsDescribedWithItsHeadingsAndColumns() {
        const QStringList definitions = filesOf("resources/reports", "*.json");
        QVERIFY(!definitions.isEmpty());
        for (const QString& path : definitions) {
            const QJsonObject report = QJsonDocument::fromJson(contentOf(path).toUtf8()).object();
            QVERIFY(!report.isEmpty());
            QStringList texts;
            collectStrings(report, {},
                           {QStringLiteral("heading"), QStringLiteral("label"), QStringLiteral("caption"),
                            QStringLiteral("emptyText")},
                           texts);
            texts.removeIf(
                [](const QString& text) { return text.startsWith(QLatin1Char('[')); }); // of the data
            for (QString& text : texts) {
                text.remove(QLatin1Char('\n')); // a narrow column breaks a word of its heading
            }
            texts << QFileInfo(path).completeBaseName();
            const QString title = report.value(QStringLiteral("title")).toString();
            if (!title.contains(QLatin1Char('['))) {
                texts << title;
            }
            const QJsonObject words = report.value(QStringLiteral("words")).toObject();
            for (const auto& word : words.value(QStringLiteral("titles")).toObject()) {
                texts << word.toString();
            }
            NOTHING_MISSING(texts);
        }
    }

    void everyRowOfTheListsOfControlsIsExplained() {
        QStringList texts;
        for (const RowRule& rule : rowRules()) {
            texts << toQString(Text(rule.group)) << toQString(Text(rule.label));
            for (const TextView type : rule.types.words) {
                if (!type.empty()) {
                    texts << toQString(Text(type)) << toQString(GetControlTypeLabel(type));
                }
            }
        }
        QVERIFY(texts.contains(QStringLiteral("ﾀﾌﾞｽﾄｯﾌﾟ・移動順")));
        QVERIFY(texts.contains(QStringLiteral("ｺﾝﾎﾞﾎﾞｯｸｽ")));
        NOTHING_MISSING(texts);
    }

    void everyEventThatAListTellsIsExplained() {
        const QString vocabulary = contentOf(inProject("src/core/vocabulary.cpp"));
        const auto table = vocabulary.indexOf(QStringLiteral("Word events[]"));
        const auto end = vocabulary.indexOf(QStringLiteral("};"), table);
        QVERIFY(table > 0 && end > table);
        QStringList texts = allOf(vocabulary.mid(table, end - table), "u\"([^\"]+)\"");
        QVERIFY(texts.contains(QStringLiteral("OnNotInList")));
        // Events of sections and of later versions stand in no list.
        for (const char* name : {"OnPrint", "OnFormat", "OnRetreat", "OnDirty"}) {
            const auto unlisted = texts.indexOf(QLatin1String(name));
            QVERIFY(unlisted >= 0);
            texts.remove(unlisted, 2);
        }
        NOTHING_MISSING(texts);
    }

    void everyInternalLinkHasItsTarget() {
        const QStringList anchors = allOf(html_, "<a name=\"([^\"]+)\"");
        QCOMPARE(QSet<QString>(anchors.begin(), anchors.end()).size(), anchors.size());
        const QStringList links = allOf(html_, "href=\"#([^\"]+)\"");
        QVERIFY(links.size() > 50);
        for (const QString& link : links) {
            QVERIFY2(anchors.contains(link), qPrintable(link));
        }
        QVERIFY(!html_.contains(QStringLiteral("href=\"http"))); // it is read without a network
    }

    void theChaptersOfTheLanguagesHaveTheSameShape() {
        QStringList names[2], shapes[2];
        for (std::size_t i = 0; i < 2; ++i) {
            for (const QString& path :
                 filesOf(i == 0 ? "resources/manual/ja" : "resources/manual/en", "*.html")) {
                names[i] << QFileInfo(path).fileName();
                const QString source = contentOf(path);
                QStringList shape{names[i].last()};
                shape << allOf(source, "<h3 id=\"([^\"]+)\"") << allOf(source, "href=\"(#[^\"]+)\"");
                for (const char* tag :
                     {"<h2", "<h3", "<p", "<pre", "<li", "<table", "<tr", "<th", "<td", "<code"}) {
                    shape << QStringLiteral("%1 %2")
                                 .arg(QLatin1String(tag))
                                 .arg(source.count(
                                     QRegularExpression(QLatin1String(tag) + QStringLiteral("[ >]"))));
                }
                shapes[i] << shape.join(QLatin1Char(' '));
            }
        }
        QCOMPARE(names[0], names[1]);
        for (qsizetype chapter = 0; chapter < shapes[0].size(); ++chapter) {
            QCOMPARE(shapes[0][chapter], shapes[1][chapter]);
        }
    }

    void theHelpWindowOpensTheManualAndReachesEveryAnchor() {
        QCOMPARE(manualAt(path_), path_);
        HelpWindow window;
        QVERIFY(window.showFile(path_));
        QTextDocument document;
        document.setHtml(html_);
        QSet<QString> reached;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
                for (const QString& name : piece.fragment().charFormat().anchorNames()) {
                    reached << name;
                }
            }
        }
        for (const QString& anchor : allOf(html_, "<a name=\"([^\"]+)\"")) {
            QVERIFY2(reached.contains(anchor), qPrintable(anchor));
        }
    }
};

RELVANE_WINDOW_TEST(ManualTest)
#include "manual_test.moc"
