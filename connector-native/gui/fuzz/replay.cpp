// replay TARGET DIRECTORY: runs a fuzz target on each file of the directory. What was ever worth keeping
// stays a test, also with a compiler that cannot fuzz.

#include "fuzzing.h"

#include <QDirIterator>
#include <QFile>

int main(int argc, char **argv)
{
    demand(argc == 3, "a target and a directory are given");
    const auto target = fuzzTargets().find(argv[1]);
    demand(target != fuzzTargets().end(), "there is such a target");
    int count = 0;
    for (QDirIterator files(QFile::decodeName(argv[2]), QDir::Files); files.hasNext(); ++count) {
        QFile file(files.next());
        demand(file.open(QIODevice::ReadOnly), "the input can be read");
        target->second(file.readAll());
    }
    demand(count > 0, "there is an input");
    return EXIT_SUCCESS;
}
