// The property's key is defined, not just declared, where this comes before its header.
#define INITGUID
#include "capture/wasapiendpoints_win.h"

#include <functiondiscoverykeys_devpkey.h>

#include <memory>

namespace {

PlaybackDevice describe(IMMDevice* device)
{
    wchar_t* id = nullptr;
    if (FAILED(device->GetId(&id)))
        return {};
    const std::unique_ptr<wchar_t, ComMemoryRelease> owner(id);
    return {QString::fromWCharArray(id).toUtf8(), Wasapi::friendlyName(device)};
}

} // namespace

ComPtr<IMMDeviceEnumerator> Wasapi::createEnumerator(HRESULT& result)
{
    ComPtr<IMMDeviceEnumerator> enumerator;
    result = CoCreateInstance(__uuidof(MMDeviceEnumerator), nullptr, CLSCTX_ALL, IID_PPV_ARGS(&enumerator));
    return enumerator;
}

QString Wasapi::friendlyName(IMMDevice* device)
{
    ComPtr<IPropertyStore> properties;
    if (FAILED(device->OpenPropertyStore(STGM_READ, &properties)))
        return {};
    QString name;
    PROPVARIANT value;
    PropVariantInit(&value);
    if (SUCCEEDED(properties->GetValue(PKEY_Device_FriendlyName, &value)) && value.vt == VT_LPWSTR)
        name = QString::fromWCharArray(value.pwszVal);
    PropVariantClear(&value);
    return name;
}

void Wasapi::eachEndpoint(EDataFlow direction, const std::function<void(const PlaybackDevice&)>& visit)
{
    HRESULT result = S_OK;
    const ComPtr<IMMDeviceEnumerator> enumerator = createEnumerator(result);
    ComPtr<IMMDeviceCollection> endpoints;
    if (!enumerator || FAILED(enumerator->EnumAudioEndpoints(direction, DEVICE_STATE_ACTIVE, &endpoints)))
        return;
    UINT count = 0;
    endpoints->GetCount(&count);
    for (UINT index = 0; index < count; ++index) {
        ComPtr<IMMDevice> device;
        if (FAILED(endpoints->Item(index, &device)))
            return;
        const PlaybackDevice described = describe(device.Get());
        if (described.id.isEmpty())
            return;
        visit(described);
    }
}
