#include "station/devicelisting.h"

#include "support/table.h"

/// What a terminal is shown of the devices.
class TestDeviceListing : public QObject {
    Q_OBJECT

    using Ports = QList<SerialTrigger::Port>;
    using ListsRows = Table<DeviceList, Ports, QStringList, QString>;
    using NamesRows = Table<QString, QString>;

private Q_SLOTS:
    void lists_data()
    {
        const ListsRows row;
        row("nothing", {}, {}, {},
            "Input devices\n"
            "  none found\n"
            "Playback devices\n"
            "  none found\n"
            "Serial ports\n"
            "  none found\n"
            "MIDI inputs\n"
            "  none found\n");
        row("one of each, and two MIDI inputs", {{{"alsa_input.pci-0.multi", "Card", 16}}, {{"program", "Speakers"}}},
            {{"ttyS0", "ttyS0 - Port"}}, {"Keys", "Desk"},
            "Input devices\n"
            "  Card (channels: 16)\n"
            "    capture/backend=1 capture/deviceId=alsa_input.pci-0.multi\n"
            "Playback devices\n"
            "  Speakers\n"
            "    capture/backend=0 capture/playbackId=program\n"
            "Serial ports\n"
            "  ttyS0 - Port\n"
            "    trigger/kind=1 trigger/serialPort=ttyS0\n"
            "MIDI inputs\n"
            "  Keys\n"
            "    trigger/kind=3 trigger/midiDevice=0 trigger/midiDeviceName=Keys\n"
            "  Desk\n"
            "    trigger/kind=3 trigger/midiDevice=1 trigger/midiDeviceName=Desk\n");
        row("values that a shell or a terminal would spoil",
            {{{QByteArray("\0\xff %1\n", 6), "%2", 2}}, {{"{0.0.1}; rm", "$(x)"}}}, {{"Zoë", "Zoë"}}, {"a b"},
            "Input devices\n"
            "  %2 (channels: 2)\n"
            "    capture/backend=1 capture/deviceId=%00%FF%20%251%0A\n"
            "Playback devices\n"
            "  $(x)\n"
            "    capture/backend=0 capture/playbackId=%7B0.0.1%7D%3B%20rm\n"
            "Serial ports\n"
            "  Zoë\n"
            "    trigger/kind=1 trigger/serialPort=Zo%C3%AB\n"
            "MIDI inputs\n"
            "  a b\n"
            "    trigger/kind=3 trigger/midiDevice=0 trigger/midiDeviceName=a%20b\n");
    }
    void lists()
    {
        const auto [devices, ports, midi, expected] = ListsRows::fetch();
        const QString text = DeviceListing::text(devices, ports, midi);
        QCOMPARE(text.left(expected.size()), expected);
        QVERIFY(QStringView(text).mid(expected.size()).startsWith(QStringLiteral("\nBelow each device")));
        QVERIFY(text.endsWith(QStringLiteral(".\n")));
    }

    void names_data()
    {
        const NamesRows row;
        const QString clef = QStringLiteral("\U0001D11E");
        row("colours and a bell", QStringLiteral("\x1b[31mRed\x07"), "[31mRed");
        row("line breaks of all kinds", QStringLiteral("a\r\nb\u2028c\u2029d\u0085e"), "abcde");
        row("from right to left", QStringLiteral("a\u202Eb"), "ab");
        row("200 characters", QString(200, u'x'), QString(200, u'x'));
        row("201 characters", QString(201, u'x'), QString(200, u'x'));
        row("a cut through a character", QString(199, u'x') + clef, QString(199, u'x'));
        row("a character of two units", clef, clef);
    }
    void names()
    {
        const auto [name, expected] = NamesRows::fetch();
        const QString text = DeviceListing::text({{}, {{"id", name}}}, {}, {});
        QVERIFY2(text.contains(QStringLiteral("Playback devices\n  %1\n    capture/").arg(expected)), qPrintable(text));
    }
};

QTEST_GUILESS_MAIN(TestDeviceListing)
#include "tst_devicelisting.moc"
