#pragma once

// QScintilla's headers use Qt's keywords, which the program is built without.
#define signals Q_SIGNALS
#define slots Q_SLOTS
#include <Qsci/qsciabstractapis.h>
#include <Qsci/qscilexerlua.h>
#include <Qsci/qsciscintilla.h>
#undef signals
#undef slots
