#pragma once

#include "animation/timer_object.h"

#include <QDialog>

#include <vector>

class CBaseWorld;

namespace tarn {

/// Whether keys of such objects have a dialog of their own for all that they hold.
bool has_key_dialog(TimerObjectType type);

} // namespace tarn

/// The modal dialog of one key of an object of the world. What is changed in it is written at once; closing it, whichever
/// way, changes nothing more.
class CDlgKeyFrame : public QDialog {
    Q_OBJECT

public:
    /// The first key is shown; a change of what it holds goes to the others too. There is at least one.
    static void do_modal(QWidget* parent, CBaseWorld& world, const std::vector<tarn::CObjKey>& keys);

private:
    class Page;

    CDlgKeyFrame(CBaseWorld& world, const std::vector<tarn::CObjKey>& keys);
};
