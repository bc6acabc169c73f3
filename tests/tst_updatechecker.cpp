// The peers here live as long as the test that they are connected in. clazy:excludeall=lambda-in-connect
#include "net/updatechecker.h"
#include "settings/appsettings.h"
#include "support/table.h"
#include "support/tlsserver.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

QByteArray http(const QByteArray& status, const QByteArray& body, const QByteArray& header = {})
{
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" + header + "\r\n" +
           body;
}

const QByteArray Newer = R"({"latest_version": "1.10", "download_url": "d", "notes": "<b>ü</b>", "notes_url": "n",
    "release_date": "2026-11-22", "min_supported_version": "1.0", "critical": true, "more": [1]})";
constexpr char Available[] = "1.10|d|<b>ü</b>|n|2026-11-22|1.0|critical";
constexpr char Malformed[] = "The update server sent a malformed response.";
constexpr char Canceled[] = "Operation canceled";
constexpr char InsecureRedirect[] = "Insecure redirect";
constexpr char NoVersion[] = "The update server did not report a version.";

} // namespace

class TestUpdateChecker : public QObject {
    Q_OBJECT

    using Outcomes = Table<QByteArray, QString>; // an answer with "<close>" at its end hangs up
    using Versions = Table<QString, QString, int>;

private Q_SLOTS:
    void init()
    {
        QCoreApplication::setApplicationName("Tidewell");
        QCoreApplication::setApplicationVersion("1.9.2");
        AppSettings::instance().lastCheck = {};
    }

    void outcome_data()
    {
        const Outcomes row;
        row("newer", http("200 OK", Newer), Available);
        row("same, longer", http("200 OK", R"({"latest_version": "1.9.2.0"})"), "up to date");
        row("accepted", http("202 Accepted", Newer), "The update server returned HTTP 202.");
        row("server error", http("500 Oops", Newer), "*server replied: Oops");
        row("no JSON", http("200 OK", "<html>"), Malformed);
        row("array", http("200 OK", "[" + Newer + "]"), Malformed);
        row("no version", http("200 OK", "{}"), NoVersion);
        row("version is a number", http("200 OK", R"({"latest_version": 2})"), NoVersion);
        row("1 MB", http("200 OK", Newer + QByteArray(1'000'000, ' ')), Available);
        row("100 MB", http("200 OK", Newer + QByteArray(100'000'000, ' ')), Malformed);
        row("moved", http("302 Found", {}, "Location: /moved\r\n"), Available);
        row("moved in circles", http("302 Found", {}, "Location: /\r\n"), "Too many redirects");
        row("moved out of TLS", http("302 Found", {}, "Location: http://127.0.0.1:9/\r\n"), InsecureRedirect);
        row("cut short", "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n{}<close>", "Connection closed");
        row("silence", {}, Canceled);
        row("a byte now and then", "HTTP/1.1 200 OK\r\n\r\n{}", Canceled);
    }
    void outcome()
    {
        const QByteArray answer = std::get<0>(Outcomes::fetch());
        const QString expected = std::get<1>(Outcomes::fetch());
        const bool tls = expected == InsecureRedirect;
        if (tls && !TlsServer::canEncrypt())
            QSKIP("Wine has no openssl to make a certificate.");
        TlsServer service;
        QByteArrayList requests;
        QVERIFY(service.listen(QHostAddress::LocalHost));
        connect(&service, &QTcpServer::newConnection, this, [&] {
            auto* const socket = qobject_cast<QSslSocket*>(service.nextPendingConnection());
            if (tls)
                TlsServer::encrypt(socket);
            connect(socket, &QSslSocket::readyRead, &service, [&, socket] {
                requests += socket->readAll(); // a GET on loopback comes in one piece
                const bool moved = requests.last().startsWith("GET /moved");
                socket->write(moved ? http("200 OK", Newer) : QByteArray(answer).replace("<close>", {}));
                if (answer.endsWith("<close>"))
                    socket->disconnectFromHost();
                auto* const timer = new QTimer(socket);
                timer->callOnTimeout(socket, [socket] { socket->write(" "); });
                if (answer.endsWith("\n{}"))
                    timer->start(50ms);
            });
        });
        AppSettings::instance().updateUrl =
            QStringLiteral("http%1://127.0.0.1:%2/latest").arg(tls ? "s" : "").arg(service.serverPort());

        QList<std::pair<QString, bool>> heard;
        constexpr auto Timeout = 400ms;
        UpdateChecker checker(nullptr, expected == Canceled ? Timeout : 15s);
        connect(&checker, &UpdateChecker::updateAvailable, this, [&](const UpdateInfo& info, bool silent) {
            const QStringList all{info.latestVersion,
                                  info.downloadUrl,
                                  info.notes,
                                  info.notesUrl,
                                  info.releaseDate,
                                  info.minSupportedVersion,
                                  info.critical ? "critical" : ""};
            heard << std::pair(all.join(u'|'), silent);
        });
        connect(&checker, &UpdateChecker::upToDate, this,
                [&](bool silent) { heard << std::pair("up to date", silent); });
        connect(&checker, &UpdateChecker::checkFailed, this,
                [&](const QString& reason, bool silent) { heard << std::pair(reason, silent); });
        for (const bool silent : {true, false}) {
            heard.clear();
            QElapsedTimer clock;
            clock.start();
            checker.check(silent);
            checker.check(!silent); // ignored
            QTRY_COMPARE_WITH_TIMEOUT(heard.size(), 1, 20'000);
            const QString text = heard[0].first;
            QCOMPARE(expected.startsWith(u'*') ? u'*' + text.right(expected.size() - 1) : text, expected);
            QCOMPARE(heard[0].second, silent);
            // Silence is noticed long before the time that even a busy server has.
            if (expected == Canceled)
                QCOMPARE(std::chrono::milliseconds(clock.elapsed()) < 4 * Timeout, answer.isEmpty());
            QVERIFY(!checker.isChecking());
        }
        QVERIFY(qAbs(AppSettings::instance().lastCheck.secsTo(QDateTime::currentDateTime())) < 60);
        const QByteArray arch = QSysInfo::currentCpuArchitecture().toUtf8();
        const QByteArray line = "GET /latest?current=1.9.2&platform=windows&arch=" + arch + " HTTP/1.1\r\n";
        QVERIFY2(requests.at(0).startsWith(line), requests.at(0));
        // In lower case, as newer versions of Qt write the names of headers.
        QVERIFY2(requests.at(0).toLower().contains("\r\nuser-agent: tidewell/1.9.2\r\n"), requests.at(0));
        checker.check(false); // and dies meanwhile
    }

    void address()
    {
        QVERIFY(UpdateChecker::requestUrl({}).toString().startsWith(
            "https://updates.quayside.example/api/latest.json?current=1.9.2&"));
        AppSettings::instance().updateUrl = "http://[x";
        UpdateChecker checker;
        QSignalSpy failed(&checker, &UpdateChecker::checkFailed);
        checker.check(true);
        QCOMPARE(failed, QList<QVariantList>({{"The update URL is not valid.", true}}));
        QVERIFY(AppSettings::instance().lastCheck.isNull()); // nobody was asked
    }

    void versions_data()
    {
        const Versions row;
        row("1.10 and 1.9", "1.10", "1.9", 1);
        row("1..2 and 1.2.0", "1..2", "1.2.0", 0);
        row("1.2-beta and 1.1", "1.2-beta", "1.1", -1);
        row("v2.1 and 1.0", "v2.1", "1.0", -1);
        row(" and 0.0.1", "", "0.0.1", -1);
        row("1.-9223372036854775808 and 1.9223372036854775807", "1.-9223372036854775808", "1.9223372036854775807", -1);
    }
    void versions()
    {
        const auto [a, b, expected] = Versions::fetch();
        QCOMPARE(UpdateChecker::compareVersions(a, b), expected);
        QCOMPARE(UpdateChecker::compareVersions(b, a), -expected);
    }
};

QTEST_GUILESS_MAIN(TestUpdateChecker)
#include "tst_updatechecker.moc"
