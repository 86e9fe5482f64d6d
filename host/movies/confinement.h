#pragma once

#include "movie_tools.h"

#include <QStringList>

class QProcess;

namespace tarn {

/// What version of Node says; 0 for no answer. `said` is the output of `node --version`.
int node_major(const QByteArray& said);

/// The arguments with which Node of that version runs the player: it may read the player's folders, write nothing, start
/// nothing, and make no code of texts.
QStringList player_arguments(const MovieTools& tools, int node_major);

/// What the process will not be able to do, however it was taken over, where the system knows how to keep it from that:
/// reach the network, start programs, write files or take all memory. It ends with this program.
void confine(QProcess& process);

/// Milliseconds of the processor that a process had so far; negative where that is not known.
qint64 processor_time(qint64 process);

} // namespace tarn
