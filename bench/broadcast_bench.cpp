// A notification code told to pages that have nothing to do with it, beside a signal of Qt and a virtual call each.

#include "engine/base_world.h"
#include "frame/child_dlg.h"
#include "frame/dlg_group.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

constexpr int unused_code = 99;

/// Looks at the code as pages do; counts, so that the call cannot be left out.
class Page : public CChildDlg {
public:
    explicit Page(QWidget* parent) : CChildDlg(QStringLiteral("Page"), parent) {}
    void update_ui(int code) override
    {
        if (code != unused_code)
            ++heard;
    }
    int heard = 0;
};

/// A part of the program whose pages are in one group.
class Listener : public tarn::UiListener {
public:
    explicit Listener(int pages)
    {
        for (int i = 0; i < pages; ++i)
            m_group.add_wnd(new Page(&m_group), i);
    }
    void update_ui(int code) override { m_group.update_ui(code); }

private:
    CDlgGroup m_group;
};

void broadcast_tarn(benchmark::State& state)
{
    Listener listener(int(state.range(0)));
    CBaseWorld world;
    world.add_listener(&listener);
    for (auto _ : state)
        world.broadcast(unused_code);
    world.remove_listener(&listener);
}

class Sender : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void told(int code);
};

class Receiver : public QObject {
    Q_OBJECT

public:
    void hear(int code)
    {
        if (code != unused_code)
            ++heard;
    }
    int heard = 0;
};

void broadcast_signal(benchmark::State& state)
{
    Sender sender;
    std::vector<std::unique_ptr<Receiver>> receivers;
    for (int i = 0; i < state.range(0); ++i) {
        receivers.push_back(std::make_unique<Receiver>());
        QObject::connect(&sender, &Sender::told, receivers.back().get(), &Receiver::hear, Qt::DirectConnection);
    }
    for (auto _ : state)
        Q_EMIT sender.told(unused_code);
}

void broadcast_loop(benchmark::State& state)
{
    std::vector<std::unique_ptr<CChildDlg>> pages;
    for (int i = 0; i < state.range(0); ++i)
        pages.push_back(std::make_unique<Page>(nullptr));
    for (auto _ : state)
        for (const auto& page : pages)
            page->update_ui(unused_code);
}

BENCHMARK(broadcast_tarn)->Name("broadcast/tarn")->Arg(40);
BENCHMARK(broadcast_signal)->Name("broadcast/Qt_signal")->Arg(40);
BENCHMARK(broadcast_loop)->Name("broadcast/virtual_loop")->Arg(40);

} // namespace

#include "broadcast_bench.moc"
