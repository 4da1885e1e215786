// A second reader of PNG files, written from the format's description and sharing nothing with the toolkit's:
// it takes nothing on trust (order of chunks, checksums, lengths, filters) and gives up with a sentence.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>

namespace marrowfin::test {

struct PlainPng {
    QString trouble;    // empty for a sound file
    QStringList chunks; // their types, in order, runs of IDAT as one
    int colorType = -1;
    int bitDepth = 0;
    QImage pixels; // ARGB32
};

PlainPng readPlainPng(const QByteArray& file);

} // namespace marrowfin::test
