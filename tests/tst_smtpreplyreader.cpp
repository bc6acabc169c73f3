#include "net/smtpdialogue.h"
#include "net/smtpreplyreader.h"

#include <QTest>

/// What the mail client makes of replies, without a connection.
class TestSmtpReplyReader : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// What the operator left open.
    void completed()
    {
        const SmtpConfig open = SmtpConfig{"h", 0, "user", "p", {}, false}.completed();
        QCOMPARE(open.port, 465);
        QCOMPARE(open.from, "user");
        QVERIFY(open.host == "h" && open.user == "user" && open.password == "p" && !open.tls);
        const SmtpConfig given = SmtpConfig{"h", 587, "user", "p", "from", true}.completed();
        QCOMPARE(given.port, 587);
        QCOMPARE(given.from, "from");
        QVERIFY(given.tls);
    }

    /// Every way to cut the same bytes in two gives the same replies, also around the length at which a line is cut.
    void ignoresPieces()
    {
        const QByteArray bytes = "250-StartTLS\r\n250 nö\r\n\r\n220\r\n123456789012\r\r\n12345678901\r\r\n"
                                 "12345678901€9\r\n\n\r\r\n354 x\r\n";
        for (qsizetype cut = 0; cut <= bytes.size(); ++cut) {
            SmtpReplyReader reader(12);
            QString lines;
            for (const QByteArray& piece : {bytes.left(cut), bytes.mid(cut)}) {
                reader.append(piece);
                while (const auto reply = reader.next())
                    lines += QString::number(reply->code) + u':' + reply->line + u'|';
                QVERIFY(reader.held() <= 13);
            }
            QCOMPARE(lines, "250:250 nö|123:123456789012|123:12345678901\r|123:12345678901\uFFFD|354:354 x|");
            QVERIFY(reader.startTlsAdvertised());
        }
    }
};

QTEST_APPLESS_MAIN(TestSmtpReplyReader)
#include "tst_smtpreplyreader.moc"
