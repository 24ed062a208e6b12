#pragma once

#include <QStringList>

/// The commands of the tool. Each takes the arguments behind its name, ahead of them the program's, and gives the exit
/// status.
int check(const QStringList& arguments);
int convert(const QStringList& arguments);
int diff(const QStringList& arguments);
int merge(const QStringList& arguments);
int plot(const QStringList& arguments);
int schema(const QStringList& arguments);
int show(const QStringList& arguments);
