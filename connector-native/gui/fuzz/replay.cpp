// Runs a fuzz target on the files of the directories it is given: each input that was ever worth keeping
// stays a test, also with a compiler that cannot fuzz.

#include "fuzzing.h"

#include <QDirIterator>
#include <QFile>

#include <span>

namespace {

int replay(const QString &directory)
{
    int count = 0;
    for (QDirIterator files(directory, QDir::Files); files.hasNext(); ++count) {
        QFile file(files.next());
        demand(file.open(QIODevice::ReadOnly), "the input can be read");
        const QByteArray bytes = file.readAll();
        const auto *const data = reinterpret_cast<const std::uint8_t *>(bytes.constData());
        LLVMFuzzerTestOneInput(data, static_cast<std::size_t>(bytes.size()));
    }
    return count;
}

} // namespace

int main(int argc, char **argv)
{
    int count = 0;
    for (char *const directory : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
        count += replay(QFile::decodeName(directory));
    }
    demand(count > 0, "there is an input");
    return EXIT_SUCCESS;
}
