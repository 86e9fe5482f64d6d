#pragma once

#include <QString>

#include <vector>

class CConfigScene;

namespace tarn {

struct FunctionText {
    QString name;
    QString text;
};

/// Functions that a step of undo makes or removes go and come with it, each with the text that it had last. Names that are
/// taken when one should come are left to who took them.
void make_functions(CConfigScene& functions, std::vector<FunctionText> made);
void remove_functions(CConfigScene& functions, const std::vector<QString>& names);

} // namespace tarn
