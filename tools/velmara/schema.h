#pragma once

#include <frequencystore/frequencystore.h>
#include <frequencystore/reflection.h>

/// The descriptions of all records, written out: as a schema of their XML, as a page to read, and as data.
QString recordsAsXsd();
QString recordsAsMarkdown();
QString recordsAsJson();
/// The columns of all CSV formats, as a page to read.
QString columnsAsMarkdown();

/// The words that the page and the data share.
QString wordFor(Velmara::MemberDescription::Kind kind);
QString wordFor(Velmara::MemberDescription::Need need);
QString wordFor(Velmara::MemberDescription::Form form);
/// The shortest text that reads back as the same number.
QString textOf(double number);
