#pragma once

#include <QLatin1String>

/// Style sheets of the controls under the display panel, which look like the panel in every theme.
namespace ControlStyles {

inline constexpr QLatin1String IdleRecordButton(
    "QPushButton {  padding: 6px 18px;  border: 1px solid #2e7d4f;  border-radius: 4px;  background: #14361f;  "
    "color: #6ee7a0;  font-weight: 700;}QPushButton:hover  { background: #1a4a2a; border-color: #6ee7a0; }"
    "QPushButton:pressed{ background: #0e2415; }");
inline constexpr QLatin1String RecordingButton(
    "QPushButton {  padding: 6px 18px;  border: 1px solid #d0403a;  border-radius: 4px;  background: #4a1512;  "
    "color: #ff8a80;  font-weight: 700;}QPushButton:hover  { background: #5e1a16; border-color: #ff4838; }"
    "QPushButton:pressed{ background: #350d0b; }");
inline constexpr QLatin1String
    Button("QPushButton {  padding: 6px 14px;  border: 1px solid #3a4a4c;  border-radius: 4px;  background: #172224;  "
           "color: #9fe8e0;  font-weight: 600;}QPushButton:hover  { background: #1f2e30; border-color: #56f0e2; }"
           "QPushButton:pressed{ background: #0f1819; }");

} // namespace ControlStyles
