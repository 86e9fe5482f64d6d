#include "watched_work.h"

#include "frame/boxes.h"

#include <QElapsedTimer>

namespace {

constexpr qint64 patience = 100;     ///< ms before there is a box
constexpr qint64 between_looks = 30; ///< ms

} // namespace

tarn::Status do_watched(QWidget* parent, const QString& what,
                        const std::function<tarn::Status(const tarn::Progress&)>& job)
{
    QElapsedTimer since;
    since.start();
    qint64 next_look = patience;
    std::unique_ptr<tarn::boxes::ProgressBox> box;
    bool goes_on = true;
    const tarn::Progress::Tell tell = [&](double share) {
        if (!goes_on || since.elapsed() < next_look)
            return goes_on;
        if (next_look == patience)
            box = tarn::boxes::progress(parent, what);
        if (box)
            goes_on = box->show(share);
        next_look = since.elapsed() + between_looks;
        return goes_on;
    };
    tarn::Status status = job(tarn::Progress(tell));
    // What the work changed is drawn for the first time now. That may take long too, and until then the box tells so.
    if (box && status)
        box->show(1);
    return status;
}
