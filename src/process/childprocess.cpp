#include "process/childprocess.h"

#include "process/childlifetime.h"

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds StartTimeout = 5s;
constexpr std::chrono::milliseconds ProgressTimeout = 5s;

int ms(std::chrono::milliseconds time)
{
    return int(time.count());
}

} // namespace

ChildProcess::ChildProcess(QObject* parent) : QProcess(parent)
{
    setProcessChannelMode(ForwardedErrorChannel);
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

bool ChildProcess::feed(const QByteArray& data, qint64 mostWaiting)
{
    if (!isRunning())
        return false;
    // As long as it takes anything: the hours of silence that make up for an outage need their time.
    while (bytesToWrite() > mostWaiting) {
        if (!waitForBytesWritten(ms(ProgressTimeout)))
            return false;
    }
    return write(data) == data.size();
}

bool ChildProcess::end(const Patience& patience)
{
    if (!isRunning())
        return true;
    if (patience.endOfInput > 0ms) {
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
