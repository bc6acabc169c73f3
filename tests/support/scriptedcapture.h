#pragma once

#include "capture/audiocapture.h"
#include "engine/recorder.h"

/// A source that delivers what the test tells it to.
class ScriptedCapture : public AudioCapture {
public:
    /// A recorder's surroundings with such a source and the system's clock.
    static Recorder::Environment environment()
    {
        return {QDateTime::currentMSecsSinceEpoch, [] { return new ScriptedCapture; }};
    }

    bool start(const PcmFormat&) override
    {
        if (refuse)
            Q_EMIT errorOccurred(QStringLiteral("No audio input device is available."));
        return !refuse;
    }
    void stop() override {}
    bool isRunning() const override { return true; }
    QString description() const override { return QStringLiteral("Scripted"); }

    bool refuse = false;
};
