#pragma once

#include "engine/base_world.h"
#include "files.h"
#include "gui_core/dxut_button.h"
#include "gui_core/dxut_check_box.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_picture.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/package_reader.h"
#include "gui_scene/tex_path_info.h"
#include "package_texts.h"
#include "printing.h"
#include "store/pak_file.h"
#include "tools/gui_tools.h"

namespace tarn::test {

using namespace Qt::StringLiterals;

/// A scene in a world, and a folder for its packages.
class SceneTest : public testing::Test {
protected:
    SceneTest()
    {
        m_scene.set_tools(make_gui_tools);
        m_scene.on_world_created(&m_world);
    }

    CGuiCore& core() { return m_scene.gui_core(); }
    QByteArray text() { return all_texts(m_scene.gui_core()); }
    QString path(const QString& name = u"scene.tarn"_s) const { return m_folder.filePath(name); }
    CDXUTDialog* dialog(const QRect& rect, const QString& name = {}) { return core().create_dialog(rect, name); }
    CDXUTControl* control(int type, CDXUTDialog* home, const QRectF& rect, const QString& name = {})
    {
        return core().create_control(type, home, rect, name);
    }
    template <class Change>
    void act(Change&& change)
    {
        const UserAction action(m_scene.journal(), u"act"_s);
        change();
    }

    /// Reads a sample's sources; its pictures' bytes are made up.
    void read_sample(const QString& name)
    {
        const QString folder = QStringLiteral(TARN_SAMPLES "/") + name;
        QMap<QString, QByteArray> files;
        for (const QString& picture : QDir(folder + u"/textures"_s).entryList(QDir::Files))
            files.insert(u"textures/"_s + QFileInfo(picture).completeBaseName() + u".png"_s,
                         "bytes of " + picture.toUtf8());
        QMap<QString, QByteArray> texts;
        for (const PackagePart& part : core().document().parts())
            if (const QString source = folder + u'/' + QLatin1String(part.entry); QFile::exists(source))
                texts.insert(QLatin1String(part.entry), content_of(source));
        auto content = read_content(content_of(folder + u"/manifest.json"_s), texts, files, core());
        ASSERT_TRUE(content.ok()) << content.status().message().toStdString();
        m_scene.install(std::move(content.value()));
        core().document().forget_history();
    }
    /// Reads a scene given as text, or shows why that fails.
    void read(const QByteArray& scene, const QMap<QString, QByteArray>& files = {},
              const QByteArray& manifest = "{\"format\":1}")
    {
        auto content = read_content(manifest, {{u"scene.json"_s, scene}}, files, core());
        ASSERT_TRUE(content.ok()) << content.status().message().toStdString();
        m_scene.install(std::move(content.value()));
        core().document().forget_history();
    }
    Status save(const QString& file, const CSaveOpt& options = {}, FileIo& io = FileIo::system())
    {
        CPakFile package(io);
        auto status = package.create(file);
        if (status)
            status = m_scene.save(package, options);
        return status ? package.close() : status;
    }
    QByteArray saved_bytes()
    {
        EXPECT_TRUE(save(path(u"bytes.tarn"_s)).ok());
        return content_of(path(u"bytes.tarn"_s));
    }

    QTemporaryDir m_folder;
    CBaseWorld m_world;
    CGuiPlugScene m_scene;
};

} // namespace tarn::test
