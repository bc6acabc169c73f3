#include "ui/vfdpanel.h"

#include "support/table.h"
#include "ui/meterballistics.h"
#include "ui/vfdgeometry.h"

#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QToolTip>

class TestVfdPanel : public QObject {
    Q_OBJECT

    using ScaleRows = Table<double, double, int, int>; // dB, position, lit segments, held segment

private Q_SLOTS:
    void scale_data();
    void scale();
    void ballistics();
    void repaints();
    void smallRepaintsLeaveNothingBehind();
    void lampsAndTexts();
};

void TestVfdPanel::scale_data()
{
    const ScaleRows row;
    row("floor", -40.0, 0.0, 0, -1);
    row("just above it", -39.9, 0.1 / 90, 0, 0);
    row("between points", -25.0, 1.5 / 9, 4, 4);
    row("amber begins", -5.0, 6.0 / 9, 18, 18);
    row("red begins", -1.0, 8.0 / 9, 24, 24);
    row("full scale", 0.0, 1.0, 28, 27);
    row("above", 3.0, 1.0, 28, 27);
    row("no number", qQNaN(), 0.0, 0, -1);
}

void TestVfdPanel::scale()
{
    const auto [db, position, lit, hold] = ScaleRows::fetch();
    QVERIFY(qAbs(VfdGeometry::position(db) - position) < 1e-12);
    QCOMPARE(VfdGeometry::litSegments(db), lit);
    QCOMPARE(VfdGeometry::holdSegment(db), hold);
    QCOMPARE(int(VfdGeometry::zone(17)), int(VfdGeometry::Zone::Bright));
    QCOMPARE(int(VfdGeometry::zone(18)), int(VfdGeometry::Zone::Amber));
    QCOMPARE(int(VfdGeometry::zone(23)), int(VfdGeometry::Zone::Amber));
    QCOMPARE(int(VfdGeometry::zone(24)), int(VfdGeometry::Zone::Red));
}

/// One loud peak on the left, then silence: when do bar and hold leave their segments?
void TestVfdPanel::ballistics()
{
    MeterBallistics meter;
    meter.rise(0.0, -60.0, 0);
    QCOMPARE(meter.lights()[0].lit, 28);
    for (qint64 now = 50; now <= 1300; now += 50)
        meter.decay(now);
    QCOMPARE(meter.lights()[0].lit, VfdGeometry::litSegments(-1.4 * 26));
    QCOMPARE(meter.lights()[0].hold, 27);
    QCOMPARE(meter.lights()[1].hold, -1);
    for (qint64 now = 1350; now <= 1400; now += 50)
        meter.decay(now);
    QCOMPARE(meter.lights()[0].hold, VfdGeometry::holdSegment(-1.4));

    meter.rise(-30.0, -0.5, 1400); // the right channel starts the hold of both again
    meter.decay(2700);
    QCOMPARE(meter.lights()[0].hold, VfdGeometry::holdSegment(-1.4));
    QVERIFY(!meter.isAtRest());
    for (int step = 0; step < 60; ++step)
        meter.decay(2701);
    QVERIFY(meter.isAtRest());
}

/// Collects what is painted.
class Watcher : public QObject {
public:
    explicit Watcher(VfdPanel& panel) { panel.installEventFilter(this); }
    QRegion takePainted()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        return std::exchange(m_painted, {});
    }
    bool eventFilter(QObject* /*object*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            m_painted += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

private:
    QRegion m_painted;
};

void TestVfdPanel::repaints()
{
    VfdPanel panel;
    panel.resize(900, 158);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    Watcher watcher(panel);
    watcher.takePainted();
    const auto isPart = [](const QRegion& painted, const QRect& of) {
        return !painted.isEmpty() && of.contains(painted.boundingRect());
    };
    const QRect clock(14, 11, 232, 54);
    panel.setElapsedMs(1200);
    QCOMPARE(watcher.takePainted().boundingRect(), clock);
    panel.setElapsedMs(1500);
    QVERIFY(watcher.takePainted().isEmpty());
    for (int i = 0; i < 2; ++i) {
        panel.setElapsedMs(0);
        QCOMPARE(watcher.takePainted().boundingRect(), clock);
    }

    panel.setAutoMode(true);
    QVERIFY(isPart(watcher.takePainted(), QRect(14, 74, 872, 16)));
    panel.setLevels(-20.0, -20.0);
    QVERIFY(isPart(watcher.takePainted(), QRect(262, 11, 624, 54)));
    // A steady tone at full scale stays at full scale, and never stands lower by a step of the fall.
    const auto onScreen = [&] { return panel.screen()->grabWindow(panel.winId()).toImage(); };
    const auto isRed = [&] { return onScreen().pixelColor(876, 30) == QColor(0xff, 0x48, 0x38); };
    panel.setLevels(0.0, 0.0);
    QTRY_VERIFY(isRed());
    for (int i = 0; i < 20; ++i) {
        panel.setLevels(0.0, 0.0);
        QTest::qWait(10);
        QVERIFY(isRed());
    }
    panel.resetLevels();
    QVERIFY(isPart(watcher.takePainted(), QRect(262, 11, 624, 54)));

    panel.setLevels(-50.0, -40.0);
    panel.resetLevels();
    QVERIFY(watcher.takePainted().isEmpty());
    panel.flashOverload();
    QVERIFY(isPart(watcher.takePainted(), QRect(14, 74, 872, 16)));
    QTest::qWait(700); // an idle panel does not blink
    QVERIFY(watcher.takePainted().isEmpty());
}

void TestVfdPanel::smallRepaintsLeaveNothingBehind()
{
    for (const qreal ratio : {1.0, 1.25, 1.5, 2.0}) {
        VfdPainter panel;
        panel.setSurface({QSize(520, 158), ratio, QFont(), Qt::white});
        const auto draw = [&](QImage& image, const VfdGeometry::MeterLights& lights, const QRect& dirty) {
            QPainter painter(&image);
            painter.setClipRect(dirty);
            panel.drawBackground(painter);
            panel.drawMeter(painter, lights, dirty);
        };
        QImage kept((QSizeF(520, 158) * ratio).toSize(), QImage::Format_RGB32);
        kept.setDevicePixelRatio(ratio);
        QImage fresh = kept;
        VfdGeometry::MeterLights shown;
        draw(kept, shown, QRect(0, 0, 520, 158));
        for (int i = 0; i < 100; ++i) {
            const VfdGeometry::MeterLights next{{{i * 17 % 29, i % 3 - 1}, {i * 5 % 29, i * 11 % 29 - 1}}};
            draw(kept, next, panel.meterChange(std::exchange(shown, next), next).toAlignedRect());
            draw(fresh, next, QRect(0, 0, 520, 158));
            QCOMPARE(kept, fresh);
        }
    }
}

void TestVfdPanel::lampsAndTexts()
{
    VfdPanel panel;
    panel.resize(520, 158);
    const auto grab = [&](const QRect& part) { return panel.grab(part).toImage(); };
    const QRect status(0, 70, 520, 24);
    const QImage noTrigger = grab(status);
    panel.setTriggerState(false, true);
    QCOMPARE(grab(status), noTrigger);
    panel.setTriggerState(true, false);
    const QImage inactive = grab(status);
    QVERIFY(inactive != noTrigger);
    panel.setTriggerState(true, true);
    QVERIFY(grab(status) != inactive);

    QHelpEvent help(QEvent::ToolTip, QPoint(20, 80), panel.mapToGlobal(QPoint(20, 80)));
    panel.setRecording(true);
    QCoreApplication::sendEvent(&panel, &help);
    QCOMPARE(QToolTip::text(), "Recording");
    panel.setFileText("a.mp3");
    QVERIFY2(panel.accessibleDescription().contains("a.mp3"), qPrintable(panel.accessibleDescription()));
    panel.setRecording(false);

    // Texts of any length stay on their line and off their neighbours.
    const QString longText(300, u'W');
    const QImage before = grab(panel.rect());
    panel.setSourceText(longText);
    panel.setCodecText(longText);
    panel.setDiskText(longText);
    panel.setFileText(longText);
    const QImage after = grab(panel.rect());
    const QRect margins[]{{0, 0, 14, 158}, {506, 0, 14, 158}, {0, 0, 520, 74}, {0, 90, 520, 38}, {0, 142, 520, 16}};
    for (const QRect& margin : margins)
        QCOMPARE(after.copy(margin), before.copy(margin));
    const QRgb background = qRgb(6, 8, 9);
    int widestGap = 0;
    for (int x = 200, gap = 0; x < 320; ++x) {
        bool empty = true;
        for (int y = 128; y < 142; ++y)
            empty = empty && after.pixel(x, y) == background;
        gap = empty ? gap + 1 : 0;
        widestGap = qMax(widestGap, gap);
    }
    QVERIFY(widestGap >= 15);
}

QTEST_MAIN(TestVfdPanel)
#include "tst_vfdpanel.moc"
