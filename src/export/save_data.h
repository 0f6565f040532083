#pragma once

#include "export/data_file.h"
#include "frame/record/channel_scale.h"
#include "frame/record/channels.h"

class OutputFiles;
struct Record;

/// What a save takes from the controls and the driver.
struct SaveRequest {
    QString base;                     ///< what the names of the files begin with
    PerChannel<bool> selected;        ///< of the channels in use
    Indexed<QString, 1, 2> mathTerms; ///< what each math channel computes: "1 + 2"
    bool decibels = false;
    QString window;   ///< the spectra's
    QString plotType; ///< the spectra's
    float samplePeriod = 0;
    FileStamp stamp;
};

/// Writes a data file for each selected channel and a spectrum file for each of them whose spectrum is on.
/// False at the first failure: what is finished stays, the file being written stays open with what it got,
/// and nothing further is written.
bool SaveData(const SaveRequest& request, const Record& record, const PerChannel<const ChannelScale*>& scales,
              OutputFiles& files);
