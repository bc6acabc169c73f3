#pragma once

#include "capture/loopback.h"

#include <windows.h>

#include <mmdeviceapi.h>
#include <wrl/client.h>

#include <functional>

using Microsoft::WRL::ComPtr;

/// The use of COM by one thread. Outlives every COM object that the thread holds.
class ComApartment {
public:
    explicit ComApartment(DWORD model) : m_result(CoInitializeEx(nullptr, model)) {}
    ~ComApartment()
    {
        if (SUCCEEDED(m_result))
            CoUninitialize();
    }
    Q_DISABLE_COPY_MOVE(ComApartment)

private:
    HRESULT m_result;
};

/// Frees what COM has allocated for its caller.
struct ComMemoryRelease {
    void operator()(void* memory) const { CoTaskMemFree(memory); }
};

namespace Wasapi {

/// \param result S_OK, or why there is none.
ComPtr<IMMDeviceEnumerator> createEnumerator(HRESULT& result);
/// The device's display name; empty when it tells none.
QString friendlyName(IMMDevice* device);
/// Calls `visit` for every active endpoint of this direction, in order. A failure ends the walk early.
void eachEndpoint(EDataFlow direction, const std::function<void(const PlaybackDevice&)>& visit);

} // namespace Wasapi
