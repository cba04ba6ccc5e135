// The four people of the sample volume.
#pragma once

#include "tools/sample-volume/SampleVolume.h"

namespace ostrevin::samples {

/// Works in the office; the account that is logged on. Most oddities of the lists are hers.
void AddAnna(SampleVolume& volume, const SampleOptions& options);
/// A student, whose hive was not written out when the power failed.
void AddFelix(SampleVolume& volume);
/// Keeps the books, in Russian.
void AddSvetlana(SampleVolume& volume);
/// Administers the network; his account is of the domain.
void AddKeller(SampleVolume& volume);

}  // namespace ostrevin::samples
