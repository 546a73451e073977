#include "Console.h"

#include <QString>

#include <cstdio>

static void print(FILE *stream, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fputc('\n', stream);
    std::fflush(stream);
}

void printLine(const QString &text)
{
    print(stdout, text);
}

void printError(const QString &text)
{
    print(stderr, QLatin1String("skylet: ") + text);
}
