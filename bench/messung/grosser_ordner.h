// The largest data folder to be backed up: 36 months of 5,000 employees, and logs of 24 months, about 100 MB.
#pragma once

#include "messung/firmenlager.h"

namespace kalvora::bench {

std::string großer_Ordner(Firmenlager& lager); // made once; ends in "/"

} // namespace kalvora::bench
