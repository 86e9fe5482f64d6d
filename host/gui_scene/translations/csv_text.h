#pragma once

#include "core/status.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace tarn {

class Document;
class Translations;

/// Rows of cells as comma-separated text (RFC 4180), and back: cells with commas, quotes or line ends stand in quotes. Read,
/// too, with semicolons or tabs, as spreadsheets write it, whichever the first line has most of.
QString csv_text(const std::vector<QStringList>& rows);
/// Fails for a quote that does not end, and beyond a million cells.
Result<std::vector<QStringList>> csv_rows(const QString& text);

/// The scene's texts with all languages, a row for each: object, attribute, its name for a person, text, languages. The
/// first row has the captions.
QString exported_translations(const Document& document, const Translations& translations);

struct ImportedTexts {
    int taken = 0;
    int left_out = 0;       ///< rows of what the scene does not have
    int first_left_out = 0; ///< counted from 1, the captions; 0: none
};
/// What a translator sent back, in UTF-8, or in UTF-16 with a mark at its beginning. Rows are told by object, attribute and
/// text; a language that is not there yet is added; empty cells change nothing. One step of undo. Fails without a change for
/// what is no such table.
Result<ImportedTexts> import_translations(Document& document, Translations& translations, const QByteArray& table);

} // namespace tarn
