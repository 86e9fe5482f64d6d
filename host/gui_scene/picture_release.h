#pragma once

#include "core/authored.h"
#include "picture_names.h"

#include <QSet>

class CConfigScene;

namespace tarn {

/// The length of a change of some objects inside a user action. Pictures that they showed before it and that nothing
/// uses after it leave the scene's files with the same step. Pictures that they never showed stay: the author may have
/// put them there for later.
class PictureRelease {
public:
    template <class Objects>
    PictureRelease(CGuiCore& core, const CConfigScene& functions, const Objects& objects)
        : m_core(core), m_functions(functions)
    {
        for (const auto* object : objects)
            each_picture(Authored::state(*object), [this](const QString& name) { m_shown.insert(name); });
    }
    ~PictureRelease();
    PictureRelease(const PictureRelease&) = delete;
    PictureRelease& operator=(const PictureRelease&) = delete;

private:
    void keep_what_objects_show();
    void keep_what_scripts_name();

    CGuiCore& m_core;
    const CConfigScene& m_functions;
    QSet<QString> m_shown;
};

} // namespace tarn
