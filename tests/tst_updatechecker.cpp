#include "app/appsettings.h"
#include "net/updatechecker.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

QByteArray http(const QByteArray& status, const QByteArray& body, const QByteArray& header = {})
{
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" + header + "\r\n" +
           body;
}

QByteArray version(const QByteArray& latest)
{
    return R"({"latest_version": ")" + latest + R"("})";
}

constexpr char Newer[] = "available 1.10";
constexpr char Malformed[] = "The update server sent a malformed response.";
constexpr char NoVersion[] = "The update server did not report a version.";

constexpr char Close[] = "<close>"; // hangs up behind the text in front
constexpr char Trickle[] = "<trickle>"; // goes on with a byte now and then

/// Answers every question with `answer`, but one for "/moved" with `moved`.
class Service : public QTcpServer {
public:
    QByteArray answer;
    QByteArray moved;
    QByteArray request;

    Service()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* const socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { reply(socket); });
        });
    }

private:
    void reply(QTcpSocket* socket)
    {
        request = socket->readAll(); // a GET on loopback comes in one piece
        QByteArray text = request.startsWith("GET /moved") ? moved : answer;
        const bool closes = text.endsWith(Close);
        const bool trickles = text.endsWith(Trickle);
        socket->write(text.replace(Close, {}).replace(Trickle, {}));
        if (closes)
            socket->disconnectFromHost();
        auto* const timer = new QTimer(socket);
        connect(timer, &QTimer::timeout, socket, [socket] { socket->write(" "); });
        if (trickles)
            timer->start(50ms);
    }
};

} // namespace

class TestUpdateChecker : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setApplicationName(QStringLiteral("Tidewell"));
        QCoreApplication::setApplicationVersion(QStringLiteral("1.9.2"));
    }
    void init()
    {
        m_service = std::make_unique<Service>();
        AppSettings::instance().updateUrl =
            QStringLiteral("http://127.0.0.1:%1/api/latest.json").arg(m_service->serverPort());
        AppSettings::instance().lastCheck = {};
    }

    void outcome_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char* name, const QByteArray& answer, const QByteArray& expected) {
            QTest::newRow(name) << answer << expected;
        };
        row("newer", http("200 OK", version("1.10")), Newer);
        row("same, longer", http("200 OK", version("1.9.2.0")), "up to date");
        row("older", http("200 OK", version("1.9.1")), "up to date");
        row("not modified", http("304 Not Modified", {}), "The update server returned HTTP 304.");
        row("accepted", http("202 Accepted", version("1.10")), "The update server returned HTTP 202.");
        row("not found", http("404 Gone away", version("1.10")), "*server replied: Gone away");
        row("server error", http("500 Oops", {}), "*server replied: Oops");
        row("no JSON", http("200 OK", "<html>"), Malformed);
        row("empty body", http("200 OK", {}), Malformed);
        row("array", http("200 OK", "[" + version("1.10") + "]"), Malformed);
        row("no version", http("200 OK", "{}"), NoVersion);
        row("empty version", http("200 OK", version("")), NoVersion);
        row("version is a number", http("200 OK", R"({"latest_version": 2})"), NoVersion);
        row("100 MB", http("200 OK", version("1.10") + QByteArray(100'000'000, ' ')), Malformed);
        row("1 MB", http("200 OK", version("1.10") + QByteArray(1'000'000, ' ')), Newer);
        row("moved", http("302 Found", {}, "Location: /moved\r\n"), Newer);
        row("moved in circles", http("302 Found", {}, "Location: /\r\n"), "Too many redirects");
        row("cut short", "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n{}<close>", "Connection closed");
        row("closed without a word", Close, "Connection closed");
        row("silence", {}, "Operation canceled");
        row("a byte now and then", "HTTP/1.1 200 OK\r\n\r\n{}<trickle>", "Operation canceled");
    }
    void outcome()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QByteArray, expected);
        m_service->answer = answer;
        m_service->moved = http("200 OK", version("1.10"));
        UpdateChecker checker(nullptr, expected == "Operation canceled" ? 200ms : 15s);
        QByteArrayList heard;
        connect(&checker, &UpdateChecker::updateAvailable, this,
                [&](const UpdateInfo& info) { heard += "available " + info.latestVersion.toUtf8(); });
        connect(&checker, &UpdateChecker::upToDate, this, [&] { heard += "up to date"; });
        connect(&checker, &UpdateChecker::checkFailed, this, [&](const QString& reason) { heard += reason.toUtf8(); });
        checker.check(true);
        QVERIFY(checker.isChecking());
        checker.check(false); // ignored
        QTRY_COMPARE_WITH_TIMEOUT(heard.size(), 1, 20'000);
        if (expected.startsWith('*'))
            QVERIFY2(heard.at(0).endsWith(expected.mid(1)), heard.at(0));
        else
            QCOMPARE(heard.at(0), expected);
        QVERIFY(!checker.isChecking());
        QVERIFY(qAbs(AppSettings::instance().lastCheck.secsTo(QDateTime::currentDateTime())) < 60);
    }

    void question()
    {
        m_service->answer =
            http("200 OK", R"({"latest_version": "2", "download_url": "d", "notes": "<b>ü</b>", "notes_url": "n",
            "release_date": "2026-11-22", "min_supported_version": "1.0", "critical": true, "more": [1]})");
        UpdateChecker checker;
        QSignalSpy available(&checker, &UpdateChecker::updateAvailable);
        checker.check(true);
        QVERIFY(available.wait());
        const auto info = available.at(0).at(0).value<UpdateInfo>();
        QCOMPARE(QStringList({info.latestVersion, info.downloadUrl, info.notes, info.notesUrl, info.releaseDate,
                              info.minSupportedVersion})
                     .join(u'|'),
                 QStringLiteral("2|d|<b>ü</b>|n|2026-11-22|1.0"));
        QVERIFY(info.critical);
        QCOMPARE(available.at(0).at(1).toBool(), true);
        const QByteArray request = m_service->request;
        const QByteArray arch = QSysInfo::currentCpuArchitecture().toUtf8();
        QVERIFY2(
            request.startsWith("GET /api/latest.json?current=1.9.2&platform=windows&arch=" + arch + " HTTP/1.1\r\n"),
            request);
        QVERIFY2(request.contains("\r\nUser-Agent: Tidewell/1.9.2\r\n"), request);
        checker.check(false); // and dies meanwhile
    }

    void address()
    {
        QVERIFY(UpdateChecker::questionUrl({}).toString().startsWith(
            QLatin1String("https://updates.quayside.example/api/latest.json?current=1.9.2&")));
        AppSettings::instance().updateUrl = QStringLiteral("http://[x");
        UpdateChecker checker;
        QSignalSpy failed(&checker, &UpdateChecker::checkFailed);
        checker.check(false);
        QCOMPARE(failed, QList<QVariantList>({{QStringLiteral("The update URL is not valid."), false}}));
        QVERIFY(AppSettings::instance().lastCheck.isNull()); // nobody was asked
    }

    void versions_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<int>("expected");
        const auto row = [](const char* a, const char* b, int expected) {
            QTest::addRow("%s and %s", a, b) << QString::fromLatin1(a) << QString::fromLatin1(b) << expected;
        };
        row("1.10", "1.9", 1);
        row("1.2", "1.2.0", 0);
        row("1.2-beta", "1.0", 0);
        row("1.2-beta", "1.1", -1);
        row("1..2", "1.2", 0);
        row("", "0.0", 0);
        row("", "0.0.1", -1);
        row("2", "1.9.9", 1);
        row("v2.1", "1.0", -1);
        row("1.20261122093000", "1.20261122092959", 1);
        row("1.-9223372036854775808", "1.9223372036854775807", -1);
        row("1.99999999999999999999", "1.1", -1);
    }
    void versions()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(int, expected);
        QCOMPARE(UpdateChecker::compareVersions(a, b), expected);
        QCOMPARE(UpdateChecker::compareVersions(b, a), -expected);
    }

private:
    std::unique_ptr<Service> m_service;
};

QTEST_GUILESS_MAIN(TestUpdateChecker)
#include "tst_updatechecker.moc"
