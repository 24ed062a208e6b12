#pragma once

/// \file
/// Everything the library offers.

/// \namespace Velmara
/// The records, with their files and their descriptions.

/// \namespace TALLYFORM
/// What all records share: the base class, exceptions, how files are read and written.

#include "base/converters.h"
#include "base/errorhandler.h"
#include "base/exceptions.h"
#include "base/logger.h"
#include "base/wholeload.h"
#include "frequencystore/csvfileloader.h"
#include "frequencystore/detectionresulthelper.h"
#include "frequencystore/filehandling.h"
#include "frequencystore/listreader.h"
#include "frequencystore/listwriter.h"
#include "frequencystore/paths.h"
#include "frequencystore/records/allrecords.h"
#include "frequencystore/reflection.h"
