<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES" sourcelanguage="en_US">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About Tidewell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tidewell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;p style=&apos;margin-top:0&apos;&gt;&lt;b&gt;Version %1&lt;/b&gt;&lt;br&gt;Continuous broadcast logging and archiving, part of the %2 suite.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;p&gt;It records one source around the clock and finds any moment again. Free software under the MIT license.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AlertsTab</name>
    <message>
        <source>Use TLS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send silence notifications</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> sec</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> dB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Silence duration:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Threshold:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Email address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Subject:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SMTP server:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Port:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User name:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Password:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>From email:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter at least an SMTP server and a recipient address.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tidewell test message</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is a test message from Tidewell.
If you received it, silence notifications are configured correctly.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Test failed</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ArchiveModel</name>
    <message>
        <source>Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Started</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Path</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CaptureDiagnostics</name>
    <message>
        <source>--- Capture diagnostics ---</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Source: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Format: %1 Hz, %2 channel(s)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Audio buffers: %1 in %2 s (avg %3 bytes = %4 ms), largest gap %5 ms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Audio received: %1 %% of real time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Meter updates: %1 (%2 per second), largest gap %3 ms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Level range: %1 to %2 dBFS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Level range: no updates received</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--- end ---</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CloseDialog</name>
    <message>
        <source>Remember my choice and stop asking</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close Tidewell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;b&gt;What would you like to do?&lt;/b&gt;&lt;p&gt;Tidewell can keep running in the notification area so logging continues, or close completely.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;b&gt;Exit Tidewell?&lt;/b&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;p style=&apos;color:#c0392b&apos;&gt;&lt;b&gt;A recording is in progress.&lt;/b&gt; Exiting will stop it.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Minimise to Tray</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FfmpegEncoder</name>
    <message>
        <source>ffmpeg ended early (exit code %1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ffmpeg was not found on this system.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ffmpeg could not be started: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ffmpeg does not keep up with the recording.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>GeneralTab</name>
    <message>
        <source>Updates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check for updates at startup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checks the Quayside update service at most once a day, and whenever you use Help &gt; Check for Updates.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ask me each time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Minimise to the tray</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exit Tidewell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Follow system</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System language</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start with the operating system</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closing the window:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Appearance:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show button on taskbar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restart the program if it crashes or hangs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Language:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Housekeeper</name>
    <message numerus="yes">
        <source>Deleted %n old recording(s)</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>LameEncoder</name>
    <message>
        <source>This build was compiled without LAME support.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LoopbackCapture</name>
    <message>
        <source>(default playback device)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LoopbackWorker</name>
    <message>
        <source>No playback device is available for loopback capture.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not start loopback capture.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Tidewell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>● &amp;Record</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A&amp;uto</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record in the hours that are marked in the scheduler</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sc&amp;heduler</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Tidewell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sc&amp;heduler...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start/stop &amp;recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check for &amp;Updates...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture &amp;Diagnostics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About Tidewell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ready</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;a href=&quot;update&quot; style=&quot;text-decoration:none; color:palette(link)&quot;&gt;v%1&lt;/a&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 - click to check for updates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved %1 (%2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>exit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tidewell started</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trigger: none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trigger: ON</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trigger: off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Schedule updated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>manual</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>■ &amp;Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Idle</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Silence detected (longer than %n second(s))</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Silence detected on the recorded source.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Audio restored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Input above full scale - peaks are being limited. Reduce the input gain if this persists.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture Diagnostics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start recording first - diagnostics measure the live capture path, which only runs while recording.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture diagnostics: measuring for 10 seconds...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Diagnostics copied to the clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking for updates...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close button set to: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>minimise to tray</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Still recording. Double-click to reopen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Still running. Double-click to reopen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Record</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Settings...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>settings changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings saved</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MidiTrigger</name>
    <message>
        <source>No MIDI input devices were found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not open the MIDI input (error %1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trigger listening on %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>channel %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>any channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MIDI %1, number %2, %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>input</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OutputTab</name>
    <message>
        <source>&amp;Choose...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filename template</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> minute segments</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>do not split</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Align splits to the clock</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Auto delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> day(s)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete records older than</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filename template:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Split records into:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select the recordings folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filename test: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;p&gt;Available tokens:&lt;/p&gt;&lt;table&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%y&lt;/b&gt;&lt;/td&gt;&lt;td&gt;year (4 digits)&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%m&lt;/b&gt;&lt;/td&gt;&lt;td&gt;month&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%d&lt;/b&gt;&lt;/td&gt;&lt;td&gt;day&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%hh&lt;/b&gt;&lt;/td&gt;&lt;td&gt;hour&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%mm&lt;/b&gt;&lt;/td&gt;&lt;td&gt;minute&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%ss&lt;/b&gt;&lt;/td&gt;&lt;td&gt;second&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%sn&lt;/b&gt;&lt;/td&gt;&lt;td&gt;serial number, incremented automatically for each file&lt;/td&gt;&lt;/tr&gt;&lt;/table&gt;&lt;p&gt;The file extension is added automatically.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PulseLoopbackWorker</name>
    <message>
        <source>Could not connect to the sound server (%1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to the sound server was lost (%1).</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QtAudioCapture</name>
    <message>
        <source>(no input device)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No audio input device is available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device %1 does not accept a usable capture format.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not open the audio input device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Audio input error (code %1).</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Recorder</name>
    <message>
        <source>Shutdown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot create the output folder: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording started</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording started (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot start encoding: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording %1 - %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording stopped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording stopped (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>split failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no encoder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>write error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>capture error</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RecordingTab</name>
    <message>
        <source>Playback device (loopback)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Input device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Internet stream (URL)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(default device)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Icecast, Shoutcast, HLS or plain HTTP. Requires ffmpeg.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reconnect automatically</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture from:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stream URL:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MP3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ogg Vorbis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FLAC</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AAC</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>WAV (uncompressed)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 kbps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>mono</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>stereo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> dB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Limit peaks instead of clipping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A loopback mix can exceed 0 dBFS. With this on, overshoots are rounded off just below full scale instead of being clipped flat.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Codec:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sample rate:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bit rate:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Channels:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ogg quality:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Input gain:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Default playback device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(decoded by ffmpeg)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(ffmpeg not found - stream logging unavailable)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;b&gt;Current source:&lt;/b&gt; %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MP3 needs either LAME compiled in or ffmpeg on the PATH.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ogg needs either libvorbis compiled in or ffmpeg on the PATH.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This codec requires ffmpeg on the PATH.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ScheduleController</name>
    <message>
        <source>Scheduler enabled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scheduler disabled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>scheduler</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scheduled block %1 - %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SchedulerDialog</name>
    <message>
        <source>Scheduler</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;b&gt;Hours to record&lt;/b&gt; (hours marked green will be recorded)&lt;br&gt;Drag with the left button to mark, the right button to clear, or press the space bar to toggle the selection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record &amp;always</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear a&amp;ll</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Office hours</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SchedulerGrid</name>
    <message>
        <source>%1 %2: recorded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2: not recorded</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SerialTrigger</name>
    <message>
        <source>No serial port has been selected for triggering.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trigger listening on %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (%2 baud, text)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (%2%3)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, inverted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The serial port %1 was lost: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This build was compiled without Qt SerialPort support.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Triggers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Alerts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;General</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SilenceAlert</name>
    <message>
        <source>Silence notification sent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Silence notification failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tidewell detected silence on the recorded source.

Time: %1
Source: %2
Threshold: %3 dB for %4 seconds
Current file: %5
</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SmtpClient</name>
    <message>
        <source>SMTP server or recipient address is not configured.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Authentication failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Notification sent.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The SMTP server did not respond in time.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StatusTexts</name>
    <message>
        <source>LOOP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>default playback device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NET</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no stream URL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>IN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>default input device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MONO</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>STEREO</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1d %2h</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StreamCapture</name>
    <message>
        <source>(no stream URL)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No stream URL has been configured.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The stream URL is not valid: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stream logging needs ffmpeg, which was not found on this system. Install it or place ffmpeg next to Tidewell.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not start ffmpeg: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stream connected: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stream stalled for %1 s - reconnecting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stream decoder exited - reconnecting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The stream ended and reconnection is disabled.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TrayIcon</name>
    <message>
        <source>&amp;Show</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start/stop &amp;recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tidewell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tidewell - recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tidewell - idle</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TriggerController</name>
    <message>
        <source>Trigger on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trigger off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>trigger</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TriggersTab</name>
    <message>
        <source>Off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serial contact closure</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serial text command</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MIDI note or control change</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>External trigger</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trigger:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> sec</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep recording for this long after the trigger releases, so brief gaps between links do not chop the archive into fragments.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Run-on:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(no serial ports found)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(no port chosen)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CTS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DSR</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DCD</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invert (record when open)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serial port:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Baud:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sense line:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start command:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop command:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(no MIDI inputs found)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>any</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MIDI input:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Note / CC:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This build was compiled without Qt SerialPort support.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdateChecker</name>
    <message>
        <source>The update URL is not valid.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update server returned HTTP %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update server sent a malformed response.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update server did not report a version.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdateDialog</name>
    <message>
        <source>Update Available</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;h3 style=&apos;color:#c0392b&apos;&gt;Important update available&lt;/h3&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;h3&gt;Update available&lt;/h3&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;p&gt;&lt;b&gt;Version %1&lt;/b&gt; is available. You are running %2.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;p style=&apos;color:gray&apos;&gt;Released %1&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;a href=&quot;%1&quot;&gt;Full release notes&lt;/a&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Download...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Skip This Version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdatePrompt</name>
    <message>
        <source>Update available: version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skipping version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check for Updates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>You are running the latest version (%1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update check failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not check for updates.

%1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VfdPanel</name>
    <message>
        <source>REC</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AUTO</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TRIG</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CLIP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TODAY</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ELAPSED</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PEAK LEVEL METER</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dBFS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>L</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>R</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NO CODEC</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DISK %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recorder display</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Automatic recording by the schedule is on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Automatic recording by the schedule is off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The external trigger is active</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The external trigger is not active</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lights up for two seconds when the input exceeds full scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Automatic mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trigger active</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trigger not active</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Codec: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Source: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disk time left: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VorbisEncoder</name>
    <message>
        <source>This build was compiled without Ogg Vorbis support.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WasapiLoopbackWorker</name>
    <message>
        <source>Could not create the audio device enumerator (0x%1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not activate the audio client (0x%1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not read the device mix format.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not initialise loopback capture (0x%1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not obtain the capture service.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Tidewell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tidewell is already running.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
