// A model's own file: what is taken can be posed and met, and is written and read back the same.

#include "fuzz.h"

#include "models/model_file.h"
#include "models/model_pick.h"

void fuzz(FuzzInput input)
{
    const auto read = tarn::read_model(input.rest());
    if (!read)
        return;
    const tarn::ModelPtr& model = read.value();
    const QByteArray file = tarn::write_model(model->data());
    const auto again = tarn::read_model(file);
    require(again.ok(), "what was written can be read");
    require(tarn::write_model(again.value()->data()) == file, "and is the same");
    tarn::ModelPose pose(model);
    for (int action = -1; action < int(model->data().actions.size()) && action < 8; ++action) {
        pose.set_action(action, 0.3);
        (void)tarn::pick(pose, {}, {{0, 0.5f, 10}, {0, 0, -1}});
    }
}
