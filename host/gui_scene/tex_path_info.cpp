#include "tex_path_info.h"

#include "core/appinfo.h"
#include "store/pak_rules.h"
#include "store/plain_file.h"

#include <utility>

namespace {

CTexPathInfo* innermost = nullptr;
constexpr qint64 max_loose_size = 64 << 20; ///< bytes

} // namespace

CTexPathInfo::CTexPathInfo(const QString& path, int relative)
    : m_outer(std::exchange(innermost, this)), m_folder(relative ? appinfo::get_tarn_texture_path(path) : path)
{
}

CTexPathInfo::~CTexPathInfo()
{
    innermost = m_outer;
}

QByteArray CTexPathInfo::find_loose(const QString& name)
{
    if (!innermost || !tarn::check_entry_name(name))
        return {};
    const QString path = tarn::file_inside(innermost->m_folder, name);
    if (path.isNull())
        return {};
    const auto content = tarn::read_plain_file(path, max_loose_size);
    return content ? content.value() : QByteArray();
}
