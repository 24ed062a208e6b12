/// Takes the place of libFuzzer where inputs are only run again: each file of the folders named.

#include <QDirIterator>
#include <QFile>

#include <cstdio>

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments);
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size);

int main(int count, char** arguments)
{
    LLVMFuzzerInitialize(&count, &arguments);
    int inputs = 0;
    for (int i = 1; i < count; ++i) {
        QDirIterator files(QString::fromLocal8Bit(arguments[i]), QDir::Files);
        for (; files.hasNext(); ++inputs) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly))
                return 1;
            std::fprintf(stderr, "%s\n", qPrintable(files.fileName())); // the last one is the one that fails
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(bytes.constData()), size_t(bytes.size()));
        }
    }
    return inputs == 0;
}
