// What a technician waits for with a list of 100,000 employees: opening, sorting and saving it.

#include "access/access_list_model.h"
#include "link/numbers.h"
#include "shell/safe_file.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <random>
#include <string>

namespace {

constexpr int row_count = 100000;

std::string big_list() {
  std::mt19937 random{7};
  std::string file;
  for (int i = 0; i < row_count; ++i) {
    file += access_line({std::to_string(random()), "Employee " + std::to_string(i), std::to_string(i % 100)});
    file += line_end;
  }
  return file;
}

struct ListOnDisk {
  ListOnDisk() { replace_file(path, big_list()); }

  const QTemporaryDir folder;
  const std::filesystem::path path = std::filesystem::path(folder.path().toStdString()) / "list.txt";
};

void open_access_list(benchmark::State& state) {
  const ListOnDisk disk;
  for (auto _ : state) {
    AccessListModel model;
    model.read(read_whole_file(disk.path));
    benchmark::DoNotOptimize(model.rowCount());
  }
}

void sort_access_list(benchmark::State& state) {
  const std::string file = big_list();
  AccessListModel model;
  for (auto _ : state) {
    state.PauseTiming();
    model.read(file);
    state.ResumeTiming();
    model.sort(static_cast<int>(state.range(0)), Qt::AscendingOrder);
  }
}

void save_access_list(benchmark::State& state) {
  const ListOnDisk disk;
  AccessListModel model;
  model.read(read_whole_file(disk.path));
  for (auto _ : state) {
    replace_file(disk.path, model.list().write());
  }
}

BENCHMARK(open_access_list)->Unit(benchmark::kMillisecond);
BENCHMARK(sort_access_list)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(save_access_list)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
