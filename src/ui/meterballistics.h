#pragma once

#include "ui/vfdgeometry.h"

#include <array>

#include <QtGlobal>

/// How the two bars of the meter and their peak holds move, in dBFS: up at once, down by 1.4 dB per step; the holds
/// stay for 1300 ms after the last new one and then fall by 0.7 dB per step. The caller brings the time, in ms on any
/// clock.
class MeterBallistics {
public:
    void rise(double leftDb, double rightDb, qint64 now);
    /// One step, due every 50 ms.
    void decay(qint64 now);
    void reset() { *this = {}; }

    /// Everything is at the floor: decay() changes nothing any more.
    bool isAtRest() const;
    VfdGeometry::MeterLights lights() const;

private:
    using Pair = std::array<double, 2>;
    static constexpr Pair Floor{VfdGeometry::FloorDb, VfdGeometry::FloorDb};

    Pair m_bar = Floor;
    Pair m_hold = Floor;
    qint64 m_heldSince = 0;
};
