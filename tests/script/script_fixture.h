#pragma once

#include "core/language.h"
#include "core/model_object.h"
#include "script/config_scene.h"
#include "script/script_runtime.h"
#include "support/printing.h"

namespace tarn::test {

using namespace Qt::StringLiterals;

/// Functions of a scene and what runs them.
class ScriptTest : public testing::Test {
protected:
    ScriptTest()
    {
        VLCMsgIniW::set_language(Language::English);
        make({});
    }
    void make(ScriptApi api, const ScriptLimits& limits = {})
    {
        m_runtime = std::make_unique<ScriptRuntime>(m_functions, std::move(api), limits);
        m_runtime->on_print = [this](const QString& text) { m_printed << text; };
        m_runtime->on_error = [this](const ScriptError& error) { m_errors << error.text(); };
    }
    void define(const QString& name, const QString& text)
    {
        const auto status = m_functions.set_function(name, text);
        EXPECT_TRUE(status.ok()) << status.message().toStdString();
    }
    ScriptResult run(const QString& text)
    {
        define(u"main"_s, text);
        return m_runtime->call(u"main"_s);
    }
    /// The value as text, or the error.
    QString told(const QString& text) { return told(run(text)); }
    static QString told(const ScriptResult& result)
    {
        if (result.error)
            return result.error->text();
        if (const auto* whole = std::get_if<qint64>(&result.value))
            return QString::number(*whole);
        if (const auto* number = std::get_if<double>(&result.value))
            return QString::number(*number);
        if (const auto* flag = std::get_if<bool>(&result.value))
            return *flag ? u"true"_s : u"false"_s;
        if (const auto* texts = std::get_if<QStringList>(&result.value))
            return u"["_s + texts->join(u'|') + u"]"_s;
        const auto* one = std::get_if<QString>(&result.value);
        return one ? *one : u"none"_s;
    }

    Document m_document;
    CConfigScene m_functions{m_document};
    std::unique_ptr<ScriptRuntime> m_runtime;
    QStringList m_printed;
    QStringList m_errors;
};

} // namespace tarn::test
