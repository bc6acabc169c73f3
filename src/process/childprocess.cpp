#include "process/childprocess.h"

#include "process/childlifetime.h"

#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds StartTimeout = 5s;
/// What QProcess may have of the data: it gives nothing back. The rest waits here.
constexpr qint64 HandedOverBytes = 16 * 1024;

int ms(std::chrono::milliseconds time)
{
    return int(time.count());
}

} // namespace

ChildProcess::ChildProcess(QObject* parent) : QProcess(parent)
{
    setProcessChannelMode(ForwardedErrorChannel);
    m_stepTimer.setSingleShot(true);
    connect(&m_stepTimer, &QTimer::timeout, this, &ChildProcess::takeNextStep);
    connect(this, &QProcess::bytesWritten, this, &ChildProcess::onTaken);
}

void ChildProcess::endWithThisProgram()
{
    ChildLifetime::endWithThisProgram(*this);
}

bool ChildProcess::launch(const QString& program, const QStringList& arguments)
{
    start(program, arguments, ReadWrite);
    return waitForStarted(ms(StartTimeout));
}

bool ChildProcess::feed(const QByteArray& data)
{
    if (!isRunning())
        return false;
    if (data.isEmpty())
        return true;
    if (m_waiting.empty())
        m_progress.start();
    m_waiting.push_back({data, {}});
    m_waiting.back().age.start();
    m_waitingBytes += data.size();
    pump();
    return true;
}

void ChildProcess::pump()
{
    while (m_handedOver < m_waiting.size() && bytesToWrite() < HandedOverBytes) {
        if (write(m_waiting[m_handedOver].data) < 0)
            return;
        ++m_handedOver;
    }
}

void ChildProcess::onTaken(qint64 bytes)
{
    m_progress.start();
    m_waitingBytes -= bytes;
    m_takenOfFirst += bytes;
    while (!m_waiting.empty() && m_takenOfFirst >= m_waiting.front().data.size()) {
        m_takenOfFirst -= m_waiting.front().data.size();
        m_waiting.pop_front();
        --m_handedOver;
    }
    if (m_step == Step::EndOfInput)
        m_stepTimer.start(m_patience.endOfInput);
    pump();
    if (m_step == Step::EndOfInput && m_waiting.empty())
        closeWriteChannel();
}

std::chrono::milliseconds ChildProcess::withoutProgress() const
{
    return std::chrono::milliseconds(m_waiting.empty() ? 0 : m_progress.elapsed());
}

std::chrono::milliseconds ChildProcess::behind() const
{
    return std::chrono::milliseconds(m_waiting.empty() ? 0 : m_waiting.front().age.elapsed());
}

QList<QByteArray> ChildProcess::takeWaiting()
{
    QList<QByteArray> list;
    for (const Waiting& item : m_waiting)
        list << item.data;
    if (!list.isEmpty())
        list.first() = list.first().mid(m_takenOfFirst);
    m_waiting.clear();
    m_handedOver = 0;
    m_takenOfFirst = 0;
    m_waitingBytes = 0;
    return list;
}

bool ChildProcess::end(const Patience& patience)
{
    // From here on somebody waits, and hears by the result.
    m_step = Step::Over;
    m_stepTimer.stop();
    m_ended = nullptr;
    if (!isRunning())
        return true;
    if (patience.endOfInput > 0ms) {
        for (; m_handedOver < m_waiting.size(); ++m_handedOver)
            write(m_waiting[m_handedOver].data);
        closeWriteChannel();
        if (waitForFinished(ms(patience.endOfInput)))
            return true;
    }
    terminate();
    if (!waitForFinished(ms(patience.terminate))) {
        kill();
        waitForFinished(ms(patience.kill));
    }
    return false;
}

void ChildProcess::endLater(const Patience& patience, std::function<void(bool byItself)> ended)
{
    m_patience = patience;
    m_ended = std::move(ended);
    connect(this, &QProcess::finished, this, &ChildProcess::reportEnd);
    if (!isRunning()) {
        m_step = Step::EndOfInput;
        QTimer::singleShot(0, this, &ChildProcess::reportEnd);
        return;
    }
    takeNextStep();
}

void ChildProcess::takeNextStep()
{
    switch (m_step) {
    case Step::None:
        m_step = Step::EndOfInput;
        if (m_waiting.empty())
            closeWriteChannel();
        m_stepTimer.start(m_patience.endOfInput);
        break;
    case Step::EndOfInput:
        m_step = Step::Terminate;
        terminate();
        m_stepTimer.start(m_patience.terminate);
        break;
    case Step::Terminate:
        m_step = Step::Kill;
        kill();
        m_stepTimer.start(m_patience.kill);
        break;
    case Step::Kill: // a disk that hangs holds even a killed process
        reportEnd();
        break;
    case Step::Over:
        break;
    }
}

void ChildProcess::reportEnd()
{
    const bool byItself = m_step == Step::EndOfInput;
    m_step = Step::Over;
    m_stepTimer.stop();
    if (const auto ended = std::exchange(m_ended, nullptr))
        ended(byItself);
}

void ChildProcess::reap()
{
    if (!isRunning()) {
        deleteLater();
        return;
    }
    connect(this, &QProcess::finished, this, &QObject::deleteLater);
    kill();
}

QString ChildProcess::reasonOfEnd(const QString& exited) const
{
    return exitStatus() == NormalExit ? exited.arg(exitCode()) : errorString();
}
