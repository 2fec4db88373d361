#pragma once

#include "algorithms/work_meter.h"
#include "base/team.h"

namespace qmx {

/// Runs work(piece, meter) for all pieces, as Team::Share tells. Each member has a meter to add its
/// work to; all of it arrives at `whole`, and a stop heard there ends them all.
template <class Work>
void SharePieces(WorkMeter& whole, int pieces, const Work& work) {
  Team& team = SharedTeam();
  if (pieces < 2 || team.Members() == 1 || Team::Member() != 0) {
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

}  // namespace qmx
