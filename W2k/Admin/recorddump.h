#ifndef QLR_ADMIN_RECORDDUMP_H
#define QLR_ADMIN_RECORDDUMP_H

#include "record.h"

void PrintRecord(const QLRDEVMODE *pdm);

#endif
