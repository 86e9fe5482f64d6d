#pragma once

#include "core/status.h"

#include <QByteArray>
#include <QString>

/// While it lives, pictures that a package names but does not hold are looked for in the texture folder beside the
/// package. Guards nest; the innermost counts.
class CTexPathInfo {
public:
    /// `relative` 1 looks beside the package `path`; 0 takes `path` as the folder itself.
    CTexPathInfo(const QString& path, int relative);
    ~CTexPathInfo();
    CTexPathInfo(const CTexPathInfo&) = delete;
    CTexPathInfo& operator=(const CTexPathInfo&) = delete;

    /// The content of the loose picture `name`; null when no guard lives, the name is unsafe, there is no such file in the
    /// folder (links out of it lead nowhere), or it is larger than pictures are.
    static QByteArray find_loose(const QString& name);

private:
    CTexPathInfo* m_outer;
    QString m_folder;
};
