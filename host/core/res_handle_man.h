#pragma once

#include <QString>

/// Makes a module's own resources (templates, menus) current for its lifetime; they are looked up there first, then in
/// the modules that were current before. Guards nest.
class CResHandleMan {
public:
    /// `root` is the module's resource folder, for example ":/gui_ui".
    explicit CResHandleMan(const QString& root);
    ~CResHandleMan();
    CResHandleMan(const CResHandleMan&) = delete;
    CResHandleMan& operator=(const CResHandleMan&) = delete;

    /// The file in `folder` of the current modules whose name is `<number>.ui` or begins with `<number>_`; empty when
    /// there is none.
    static QString find(const QString& folder, int number);
};
