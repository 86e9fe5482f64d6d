#pragma once

#include "core/model_changes.h"
#include "core/status.h"
#include "font_names.h"

#include <QByteArray>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

class CGuiCore;

namespace tarn {

class Document;
class ModelObject;
struct ObjectState;

/// The fonts of a scene's package, "fonts/letters.ttf": the program has them while the scene is open. They are loaded as
/// the package's entries come and go, by undo too. One that is damaged is kept, and not used. A family that the machine has
/// is drawn with the machine's font: no package can put other letters into the program's own windows.
class FontLibrary : private ModelListener {
public:
    static constexpr qint64 largest_file = 16 * 1024 * 1024; ///< bytes
    static constexpr int most_fonts = 64;                    ///< that are used at the same time

    explicit FontLibrary(CGuiCore& core);
    ~FontLibrary() override;
    FontLibrary(const FontLibrary&) = delete;
    FontLibrary& operator=(const FontLibrary&) = delete;

    struct Font {
        QString entry; ///< of the package
        QByteArray content;
        QStringList families; ///< none of a font that cannot be used
        int id = -1;          ///< among the program's; -1 for one that is not loaded
    };
    /// As the package has them now, until it changes.
    const std::vector<Font>& fonts();
    /// The one that has the family; null when the package has none.
    const Font* find(const QString& family);
    /// What the font says of its maker's rights.
    static FontNotice notice(const Font& font);

    /// How the letters of the file are cut.
    struct Cut {
        bool bold = false;
        bool italic = false;
    };
    static Cut cut(const Font& font);
    /// Why the content cannot be taken as a font.
    static Status check(const QByteArray& content);
    /// Takes the font in the file `path` into the package, once for each content; recorded. Answers its first family.
    Result<QString> take_file(const QString& path);
    /// The same for what a style's file, or another scene, has under the name "letters.ttf".
    Result<QString> take(const QString& name, const QByteArray& content);
    /// Whether one of its families is among `named`, which are named_font_families().
    static bool is_named(const Font& font, const QSet<QString>& named);
    /// Takes those out of the package whose families nothing names; recorded. Damaged ones stay.
    void drop_unnamed(const QStringList& entries);
    /// Takes it out of the package; recorded. What names its families goes on doing so.
    void remove(const QString& entry);

private:
    void model_changed(const ModelChange& change) override;
    bool is_current() const;
    void follow();
    static void load(Font& font, const QStringList& of_machine);

    CGuiCore& m_core;
    std::vector<Font> m_fonts;
};

/// The package entry of the font `name`.
QString font_entry(const QString& name);
bool is_font_entry(const QString& entry);

/// The families that an object's attributes name.
QStringList font_families_of(const ObjectState& state);
/// What the object's attributes name of them it names no more; recorded.
void forget_font_families(ModelObject& object, const QStringList& families);
/// Those that any object of the scene names, in folded case.
QSet<QString> named_font_families(const Document& document);
/// Whether the program is one that can draw: only such a one has fonts.
bool has_fonts();
/// Whether the program knows the family, of the system's or of a package's. Without fonts every family counts as known.
bool has_font_family(const QString& family);
/// The family in which texts are drawn that name `family`.
QString drawn_font_family(const QString& family);

/// The length of a change inside a user action. Fonts of the package that something named before it, and that nothing
/// names after it, leave the package with the same step.
class FontRelease {
public:
    FontRelease(CGuiCore& core, FontLibrary& library);
    ~FontRelease();
    FontRelease(const FontRelease&) = delete;
    FontRelease& operator=(const FontRelease&) = delete;

private:
    CGuiCore& m_core;
    FontLibrary& m_library;
    QSet<QString> m_named; ///< named_font_families()
};

} // namespace tarn
