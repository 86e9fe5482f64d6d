#pragma once

#include "commands/command.h"
#include "commands/reissued_ids.h"
#include "commands/scene_files.h"
#include "commands/three_way_merge.h"
#include "support/attributes.h"
#include "support/scene_fixture.h"

namespace tarn::test {

/// Versions of one scene: a base, and what two authors made of it.
class VersionsTest : public SceneTest {
protected:
    /// Saves what the scene is now.
    void keep(const QString& name)
    {
        const Status status = m_scene.save_scene(path(name));
        ASSERT_TRUE(status.ok()) << status.message().toStdString();
    }
    void open(const QString& name)
    {
        const Status status = m_scene.open_scene(path(name));
        ASSERT_TRUE(status.ok()) << status.message().toStdString();
    }
    /// The present scene is the base; `change` makes a version of it.
    template <class Change>
    void version(const QString& name, Change&& change)
    {
        open(u"base"_s);
        change();
        keep(name);
    }
    template <class Ours, class Theirs>
    MergedScene merge(Ours&& ours, Theirs&& theirs, MergeSide preferred = MergeSide::Ours)
    {
        keep(u"base"_s);
        version(u"theirs"_s, theirs);
        version(u"ours"_s, ours);
        return merge_files(u"base"_s, u"ours"_s, u"theirs"_s, preferred);
    }
    SceneSnapshot read_version(const QString& name)
    {
        auto read = m_tables.read(path(name));
        EXPECT_TRUE(read.ok()) << read.status().message().toStdString();
        return read.value();
    }
    MergedScene merge_files(const QString& base, const QString& ours, const QString& theirs,
                            MergeSide preferred = MergeSide::Ours)
    {
        auto merged = merge_versions(m_tables.document(), read_version(base), read_version(ours), read_version(theirs),
                                     preferred);
        EXPECT_TRUE(merged.ok()) << merged.status().message().toStdString();
        return merged ? merged.value() : MergedScene();
    }
    /// Puts the merged scene in the place of the present one.
    void show(const MergedScene& merged)
    {
        m_scene.install(merged.scene);
        core().document().forget_history();
    }
    QByteArray texts_of(const SceneSnapshot& scene)
    {
        QByteArray all;
        for (const auto& [entry, text] : package_texts(m_tables.document(), scene))
            if (entry != u"manifest.json")
                all += text;
        return all;
    }
    /// The same for scenes that differ in their ids only.
    QByteArray content_of(SceneSnapshot scene)
    {
        IssuedIds issued;
        quint32 next = 2;
        for (const ObjectKind& kind : m_tables.document().kinds())
            for (const StatePtr& state : scene.objects[kind.place])
                if (!kind.fixed)
                    issued.insert(state->id, next++);
        reissue_ids(m_tables.document(), scene, issued);
        return texts_of(scene);
    }
    CDXUTControl* control_named(const QString& name)
    {
        for (CDXUTControl* each : core().controls())
            if (each->name() == name)
                return each;
        return nullptr;
    }
    CDXUTDialog* dialog_named(const QString& name)
    {
        for (CDXUTDialog* each : core().GetDialogs())
            if (each->name() == name)
                return each;
        return nullptr;
    }
    CommandResult run(const QStringList& arguments)
    {
        const Command* command = find_command(arguments);
        EXPECT_TRUE(command);
        return command ? run_command(*command, arguments) : CommandResult();
    }

    SceneTables m_tables;
};

} // namespace tarn::test
