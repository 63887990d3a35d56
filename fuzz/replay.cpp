#include "fuzz/support.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <cstdio>
#include <map>
#include <string>

using namespace Qt::Literals::StringLiterals;

namespace
{

std::map<std::string, void (*)(QByteArrayView)> &harnesses()
{
    static std::map<std::string, void (*)(QByteArrayView)> all;
    return all;
}

} // namespace

fuzz::Registration::Registration(const char *name, void (*run)(QByteArrayView))
{
    harnesses()[name] = run;
}

/// Runs every harness on the files of its corpus: replay FOLDER-OF-THE-CORPORA
int main(int count, char **arguments)
{
    const QDir corpora(QString::fromLocal8Bit(count > 1 ? arguments[1] : "."));
    for (const auto &[name, run] : harnesses()) {
        const QDir corpus(corpora.filePath(QString::fromStdString(name)));
        const QStringList names = corpus.entryList(QDir::Files);
        fuzz::require(!names.isEmpty(), "every harness has a corpus");
        for (const QString &file : names) {
            std::fprintf(stderr, "%s/%s\n", name.c_str(), qPrintable(file)); // the last one is the finding
            QFile input(corpus.filePath(file));
            fuzz::require(input.open(QFile::ReadOnly), "a corpus can be read");
            run(input.readAll());
        }
        std::printf("%-16s %4d inputs\n", name.c_str(), int(names.size()));
    }
}
