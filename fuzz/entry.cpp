/// What libFuzzer calls, and replay.cpp.

#include "fuzz/target.h"

#include <QtGlobal>

using namespace Velmara::fuzz;

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}); // inputs make many
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    isDone([&] { run(Input(QByteArray(reinterpret_cast<const char*>(data), int(size)))); });
    return 0;
}
