#include <QDir>
#include <QRegularExpression>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

namespace {

/// What a translation takes over as it is, in any order: places for values, tags, mnemonics, blanks at the ends.
QStringList fixedParts(const QString& text)
{
    static const QRegularExpression part(QStringLiteral("%[1-9n]|<[^>]*>|&|\\.\\.\\.|^\\s+|\\s+$"));
    QStringList parts;
    for (const QRegularExpressionMatch& match : part.globalMatch(text))
        parts.append(match.captured());
    parts.sort();
    return parts;
}

} // namespace

class TestTranslations : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyTextIsComplete_data()
    {
        QTest::addColumn<QString>("path");
        const QDir folder(QStringLiteral(QT_TESTCASE_SOURCEDIR "/../resources/i18n"));
        for (const QString& name : folder.entryList({QStringLiteral("*.ts")}))
            QTest::addRow("%s", qPrintable(name)) << folder.filePath(name);
    }

    void everyTextIsComplete()
    {
        QFETCH(const QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&file);
        QString source;
        int missingForms = 0;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            if (xml.name() == u"message") {
                QVERIFY2(missingForms == 0, qPrintable(source));
                missingForms = xml.attributes().hasAttribute(QStringLiteral("numerus")) ? 2 : 1;
            } else if (xml.name() == u"source") {
                source = xml.readElementText();
            } else if (xml.name() == u"translation" || xml.name() == u"numerusform") {
                QVERIFY2(!xml.attributes().hasAttribute(QStringLiteral("type")), qPrintable(source));
                if (missingForms == 2 && xml.name() == u"translation")
                    continue; // its forms follow
                const QString form = xml.readElementText();
                QVERIFY2(!form.isEmpty(), qPrintable(source));
                QVERIFY2(fixedParts(form) == fixedParts(source), qPrintable(source + u'\n' + form));
                --missingForms;
            }
        }
        QVERIFY2(!xml.hasError() && !source.isEmpty() && missingForms == 0, qPrintable(source));
    }

    void spanishIsFoundByItsLocale()
    {
        QTranslator spanish;
        QVERIFY(spanish.load(QLocale(QStringLiteral("es")), QStringLiteral("tidewell"), QStringLiteral("_"),
                             QStringLiteral(TIDEWELL_QM_DIR)));
        QCOMPARE(spanish.translate("Recorder", "Recording started"), QStringLiteral("Grabación iniciada"));
        const char* const deleted = "Deleted %n old recording(s)";
        QVERIFY(spanish.translate("Housekeeper", deleted, nullptr, 1).endsWith(u"grabación antigua"));
        QVERIFY(spanish.translate("Housekeeper", deleted, nullptr, 0).endsWith(u"grabaciones antiguas"));
    }
};

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
