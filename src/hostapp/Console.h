#pragma once

class QString;

//! One line on the standard output, at once.
void printLine(const QString &text);

//! One line on the standard error, after the program's name.
void printError(const QString &text);
