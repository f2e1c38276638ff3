// Decides whether a list stays smooth: a layout pass of a whole library must fit in a frame, and a step of
// scrolling in a small part of one (16.7 ms at 60 frames a second).

#include "platform/uikit/UICollectionView.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QImage>
#include <QLabel>
#include <QPainter>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <vector>

#include <malloc.h>

namespace exifcard {
namespace {

using Clock = std::chrono::steady_clock;

/// A row of a picture and two texts, such as a card's strip has.
class Row : public UICollectionViewCell {
public:
    Row() {
        _title.setGeometry(70, 8, 200, 20);
        _detail.setGeometry(70, 30, 200, 20);
    }
    static inline std::int64_t paintings = 0;

    void show(std::size_t item) {
        _title.setText(QStringLiteral("IMG_%1.jpg").arg(item));
        _detail.setText(QStringLiteral("f/2.8  1/250  ISO %1").arg(100 + item % 900));
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        ++paintings;
        UICollectionViewCell::paintEvent(event);
        QPainter(this).fillRect(QRect(8, 8, 54, 54), Qt::darkCyan);
    }

private:
    QLabel _title{this};
    QLabel _detail{this};
};

class Rows : public UICollectionViewDataSource, public UICollectionViewDelegateFlowLayout {
public:
    std::size_t count = 0;
    CGSize size = {366, 70};
    bool isUniform = true;

    std::size_t numberOfItemsInSection(UICollectionView&, std::size_t) override { return count; }
    UICollectionViewCell* cellForItemAtIndexPath(UICollectionView& list, IndexPath indexPath) override {
        auto& cell = list.dequeueReusableCellWithReuseIdentifier("row", indexPath);
        static_cast<Row&>(cell).show(indexPath.item);
        return &cell;
    }
    CGSize sizeForItemAtIndexPath(
        UICollectionView&, const UICollectionViewFlowLayout&, IndexPath indexPath) override {
        return isUniform ? size : CGSize{size.width, size.height + static_cast<double>(indexPath.item % 7)};
    }
};

void fill(UICollectionView& list, const std::shared_ptr<Rows>& rows) {
    list.resize(375, 700);
    list.registerClass("row", [] { return std::make_unique<Row>(); });
    list.setDataSource(rows);
    list.setDelegate(rows);
    list.collectionViewLayout().minimumLineSpacing = 2;
    list.collectionViewLayout().sectionInset = {4, 4, 4, 4};
}

void laysOutALibrary(benchmark::State& state) {
    const auto rows = std::make_shared<Rows>();
    rows->count = static_cast<std::size_t>(state.range(0));
    rows->size = {121, 133};
    rows->isUniform = state.range(1) != 0;
    UICollectionView list;
    fill(list, rows);
    list.layoutIfNeeded();
    for (auto step : state) {
        list.collectionViewLayout().invalidateLayout();
        list.layoutIfNeeded();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(laysOutALibrary)
    ->ArgNames({"items", "equal"})
    ->Args({100'000, 1})
    ->Args({100'000, 0})
    ->Unit(benchmark::kMillisecond);

double mebibytesInUse() {
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd) / (1024 * 1024);
}

/// What a long list takes beyond a short one, from its first item shown to its last.
void holdsALibrary(benchmark::State& state) {
    const auto rows = std::make_shared<Rows>();
    rows->size = {121, 133};
    rows->isUniform = state.range(1) != 0;
    UICollectionView list;
    fill(list, rows);
    list.show();
    const auto showAll = [&](std::size_t count) {
        rows->count = count;
        list.reloadData();
        list.layoutIfNeeded();
        for (int part = 0; part <= 10; ++part) {
            list.setContentOffset({0, (list.contentSize().height - 700) * part / 10}, /*animated=*/false);
            list.viewport()->repaint();
            QCoreApplication::processEvents();
        }
    };
    showAll(100);
    const double before = mebibytesInUse();
    for (auto step : state) {
        showAll(static_cast<std::size_t>(state.range(0)));
    }
    state.counters["MiB_over_100"] = mebibytesInUse() - before;
}
BENCHMARK(holdsALibrary)
    ->ArgNames({"items", "equal"})
    ->Args({100'000, 1})
    ->Args({100'000, 0})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// One new row a frame, painted at twice the pixels.
void scrollsAFrame(benchmark::State& state) {
    const auto rows = std::make_shared<Rows>();
    rows->count = 2000;
    UICollectionView list;
    fill(list, rows);
    list.show();
    QCoreApplication::processEvents();
    Row::paintings = 0;
    std::vector<double> frames;
    double y = 0;
    for (auto step : state) {
        y = y + 72 > list.contentSize().height - 700 ? 0 : y + 72;
        const auto start = Clock::now();
        list.setContentOffset({0, y}, /*animated=*/false);
        QEvent paintWhatIsDue(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&list, &paintWhatIsDue);
        frames.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        QCoreApplication::processEvents(); // Between the frames, cells are made ahead.
    }
    std::ranges::sort(frames);
    const auto percentile = [&frames](double part) {
        return frames[static_cast<std::size_t>(part * static_cast<double>(frames.size() - 1))];
    };
    state.counters["p50_ms"] = percentile(0.5);
    state.counters["p95_ms"] = percentile(0.95);
    state.counters["max_ms"] = frames.back();
    state.counters["rows_painted"] =
        benchmark::Counter(static_cast<double>(Row::paintings), benchmark::Counter::kAvgIterations);
    state.counters["scale"] = list.devicePixelRatioF();
}
BENCHMARK(scrollsAFrame)->Iterations(1900)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace exifcard
