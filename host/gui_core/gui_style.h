#pragma once

#include "core/model_object.h"
#include "style_state.h"

class CGuiCore;

namespace tarn {

struct ModelChange;

/// Whether styles, or which one is in force, may be others.
bool changes_looks(const ModelChange& change);

} // namespace tarn

/// A style of the scene, or one that could become one: its state is all there is to it.
class CGuiStyle : public tarn::ModelObject {
public:
    CGuiStyle(CGuiCore& core, tarn::StatePtr state);

    const QString& name() const { return style_state().name; }
    tarn::StyleOrigin origin() const { return tarn::StyleOrigin(style_state().origin); }
    const tarn::StyleState& style_state() const { return state<tarn::StyleState>(); }

    tarn::ObjectState* fresh_state() const override { return new tarn::StyleState; }
    const char* class_name() const override { return "CGuiStyle"; }
    void state_changed() override;

private:
    CGuiCore& m_core;
};
