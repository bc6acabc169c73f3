#include "encode/compiledoutencoders.h"

bool LameEncoder::open(const QString&, const PcmFormat&)
{
    m_errorString = tr("This build was compiled without LAME support.");
    return false;
}

bool VorbisEncoder::open(const QString&, const PcmFormat&)
{
    m_errorString = tr("This build was compiled without Ogg Vorbis support.");
    return false;
}
