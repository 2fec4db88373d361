// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "algorithms/work_meter.h"
#include "base/lanes.h"
#include "base/team.h"

namespace qmx {

/// Columns or rows from..to in strips for the pieces of a job.
struct Strips {
  int from = 1;
  int to = 0;
  int size = 1;  ///< Of each but the last.
  int count = 0;

  int First(int strip) const { return from + strip * size; }
  int Last(int strip) const { return std::min(First(strip) + size - 1, to); }
};

/// Strips of from..to, as even as can be and at most `most` wide, and as many as there are members
/// where that leaves them a quarter of it; but for the last they are multiples of `step`.
inline Strips StripsOf(int from, int to, int most, int step = 1) {
  const int all = to - from + 1;
  if (all <= 0) return {from, to, 1, 0};
  const int members = SharedTeam().Members();
  const int enough = std::min(members, (all + most / 4) / std::max(1, most / 4));
  const int parts = std::max({1, enough, (all + most - 1) / most});
  const int even = ((all + parts - 1) / parts + step - 1) / step * step;
  const int size = even <= most ? even : std::max(1, most >= step ? most / step * step : most);
  return {from, to, size, (all + size - 1) / size};
}

/// The columns of a block that members share in lanes, from column `first` of `columns` ones. The
/// first and the last ones are narrow, since others wait for the first and there is little beside
/// the last; but with many columns not too narrow, since narrow blocks take longer. A multiple of
/// `panel` where it is not the last, and at most `block`.
inline int ColumnsOfLane(int first, int columns, int block, int panel) {
  constexpr int kManyLanes = 16;
  const int least = std::max({1, block / 4, std::min(block, columns / kManyLanes)});
  const int left = columns - first + 1;
  const int growing = first == 1 ? least : first <= least + panel ? 2 * least : block;
  const int width = std::min(growing, std::max(least, left / 3));
  const int whole = std::max(1, width / panel) * panel;
  return std::min({whole, std::max(block, 1), left});
}

/// Runs work(piece, meter) for all pieces, as Team::Share tells. Each member has a meter to add its
/// work to; all of it arrives at `whole`, and a stop heard there ends them all.
template <class Work>
void SharePieces(WorkMeter& whole, int pieces, const Work& work) {
  Team& team = SharedTeam();
  if (pieces < 2 || !team.CanShare()) {
    for (int piece = 0; piece < pieces; ++piece) work(piece, whole);
    return;
  }
  OthersWork others(team);
  whole.ListenTo(&others);
  const auto run = [&](int piece) {
    if (Team::Member() == 0) return work(piece, whole);
    WorkMeter own(others);
    work(piece, own);
    own.End();
  };
  struct Quiet {
    WorkMeter& meter;
    ~Quiet() { meter.ListenTo(nullptr); }
  };
  {
    const Quiet quiet{whole};
    team.Share(pieces, run, [&whole] { whole.Look(); });
  }
  whole.Add(others.Take());
}

/// The first columns of the blocks that columns 1..columns are cut into for lanes, and the one
/// behind the last.
inline std::vector<int> FirstsOfLanes(int columns, int block, int panel) {
  std::vector<int> firsts{1};
  while (firsts.back() <= columns) {
    firsts.push_back(firsts.back() + ColumnsOfLane(firsts.back(), columns, block, panel));
  }
  return firsts;
}

/// Does all that is to be done in lanes that begin with the columns `firsts`, the last of which is
/// the one behind, shared by the members of the team: follow(step, from, to, meter) for columns
/// that take a step, and finish(lane, meter). The plan comes without the widths.
template <class Follow, class Finish>
void ShareLanes(WorkMeter& whole, const std::vector<int>& firsts, Lanes::Plan plan,
                const Follow& follow, const Finish& finish) {
  for (std::size_t lane = 1; lane < firsts.size(); ++lane) {
    plan.widths.push_back(firsts[lane] - firsts[lane - 1]);
  }
  Lanes lanes(SharedTeam(), std::move(plan));
  while (!lanes.IsDone()) {
    lanes.Begin();
    SharePieces(whole, SharedTeam().Members(), [&](int, WorkMeter& meter) {
      lanes.Work([&](int step, int first,
                     int last) { follow(step, firsts[first], firsts[last + 1] - 1, meter); },
                 [&](int lane) { return finish(lane, meter); },
                 [&] {
                   if (Team::Member() == 0) meter.Look();
                 });
    });
  }
}

/// Something that every member of the team works with by itself; a single one where the work is not
/// shared.
template <class T>
class PerMember {
 public:
  PerMember() = default;
  PerMember(bool shared, const T& each)
      : all_(shared && SharedTeam().CanShare() ? SharedTeam().Members() : 1, each) {}

  bool IsShared() const { return all_.size() > 1; }
  /// That of the running member.
  T& Own() { return all_[IsShared() ? Team::Member() : 0]; }

 private:
  std::vector<T> all_;
};

/// Runs work(row, meter) for the rows 1..rows of a matrix, which do not need each other, in strips
/// that are shared.
template <class Work>
void ShareStripsOfRows(WorkMeter& whole, int rows, const Work& work) {
  const int pieces = 4 * SharedTeam().Members();
  const Strips strips = StripsOf(1, rows, std::max(1, (rows + pieces - 1) / pieces));
  SharePieces(whole, strips.count, [&](int piece, WorkMeter& meter) {
    for (int row = strips.First(piece); row <= strips.Last(piece); ++row) work(row, meter);
  });
}

/// The same for rows of so many columns, which are shared where they have numbers enough.
template <class Work>
void ShareRows(WorkMeter& whole, int rows, int cols, const Work& work) {
  constexpr double kEnough = 8e4;
  if (1.0 * rows * cols >= kEnough) return ShareStripsOfRows(whole, rows, work);
  for (int row = 1; row <= rows; ++row) work(row, whole);
}

}  // namespace qmx
