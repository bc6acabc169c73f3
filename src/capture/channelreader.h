#pragma once

class AudioCapture;
struct ChannelPick;
class QAudioDevice;
class QObject;

/// A stopped source of some channels of an input device, where QAudioSource cannot deliver them: on Linux it asks the
/// sound server for channels in places such as "front left", and the inputs of a large sound card have no such places.
/// \return null where QAudioSource can deliver them. Gain and limiter are read from the settings for every block.
AudioCapture* createChannelReader(const QAudioDevice& device, const ChannelPick& pick, QObject* parent);
