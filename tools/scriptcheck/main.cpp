// kel_scriptcheck: checks an action script the way the library parses it and
// prints its parse tree, one node per line, or the parse error.
//
//   kel_scriptcheck FILE        the script in FILE
//   kel_scriptcheck [-]         the script on standard input
//   kel_scriptcheck -e SCRIPT   the script given on the command line
//
// Exit status: 0 the script parses, 1 it does not, 2 bad usage or an
// unreadable file.
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"

#include <QFile>
#include <QString>
#include <cstdio>
#include <memory>

namespace {

const char kUsage[] =
    "usage: kel_scriptcheck [FILE | - | -e SCRIPT]\n"
    "Parses an action script (from FILE, standard input, or SCRIPT) and prints its\n"
    "parse tree, or \"parse error: MESSAGE (line L, position P)\".\n"
    "Exit status: 0 valid, 1 parse error, 2 usage or input error.\n";

bool readAll(const QString& path, QString* text)
{
    QFile file;
    const bool opened = path == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                   : (file.setFileName(path), file.open(QIODevice::ReadOnly));
    if (!opened)
        return false;
    *text = QString::fromUtf8(file.readAll());
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QString script;
    const QString first = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("-");
    if (first == QLatin1String("-h") || first == QLatin1String("--help")) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    if (first == QLatin1String("-e")) {
        if (argc != 3) {
            std::fputs(kUsage, stderr);
            return 2;
        }
        script = QString::fromLocal8Bit(argv[2]);
    } else if (argc > 2 || (first.startsWith(QLatin1Char('-')) && first != QLatin1String("-"))) {
        std::fputs(kUsage, stderr);
        return 2;
    } else if (!readAll(first, &script)) {
        std::fprintf(stderr, "kel_scriptcheck: cannot read %s\n", qPrintable(first));
        return 2;
    }

    Uip_ParseError error;
    std::unique_ptr<Uip_ParseNode> root(Uip_ParseScript(script, &error));
    if (!root) {
        std::fprintf(stderr, "parse error: %s (line %ld, position %ld)\n", error.mMessage.toUtf8().constData(),
                     error.mLine, error.mPosition);
        return 1;
    }
    std::fputs(root->toTreeString(QString()).toUtf8().constData(), stdout);
    return 0;
}
