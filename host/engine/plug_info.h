#pragma once

/// The main object of a plug-in, made and destroyed by the plug-in's own functions (see plug_dll_man.h).
class CPlugInfo {
public:
    virtual ~CPlugInfo() = default;
    /// Shows what the plug-in has to say when the program starts.
    virtual void pop_welcome_window() {}
};
