#include "net/smtpdialogue.h"
#include "net/smtpreplyreader.h"
#include "support/table.h"

/// What the mail client makes of replies, without a connection.
class TestSmtpDialogue : public QObject {
    Q_OBJECT

    using Steps = Table<SmtpConfig, bool, QString>;

private Q_SLOTS:
    void steps_data()
    {
        const Steps row; // where 250 leads after either EHLO
        const auto config = [](const char* user, bool tls, int port) {
            return SmtpConfig{{}, port, user, {}, {}, tls};
        };
        row("plain", config("", false, 465), false, "2:250>8 3:220>4 4:250>8");
        row("plain, login", config("u", false, 587), false, "2:250>5 3:220>4 4:250>5");
        row("STARTTLS", config("u", true, 587), false, "2:250>3 3:220>4 4:250>5");
        row("STARTTLS is over", config("", true, 587), true, "2:250>8 3:220>4 4:250>8");
        row("TLS, login", config("u", true, 465), false, "2:250>5 3:220>4 4:250>5");
    }
    /// Every code in every state: which of them lead on, and where to.
    void steps()
    {
        const auto [config, encrypted, afterEhlo] = Steps::fetch();
        constexpr int LastCode = 999;
        QStringList story;
        for (int state = 0; state <= 14; ++state) {
            QStringList steps;
            for (int code = -1; code <= LastCode; ++code) {
                if (const auto next = SmtpDialogue::next(SmtpDialogue::State(state), code, config, encrypted))
                    steps << QStringLiteral("%1:%2>%3").arg(state).arg(code).arg(int(*next));
            }
            story << (steps.size() > LastCode ? QStringList("any" + steps.last()) : steps);
        }
        QCOMPARE(story.join(u' '), "1:220>2 " + afterEhlo +
                                       " 5:334>6 6:334>7 7:235>8 8:250>9 9:250>10 9:251>10 10:354>11 11:250>12 "
                                       "any12:999>13");
    }

    /// Every way to cut the same bytes in two gives the same replies, also around the length at which a line is cut.
    void readerIgnoresPieces()
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

QTEST_APPLESS_MAIN(TestSmtpDialogue)
#include "tst_smtpdialogue.moc"
