#pragma once

#include "frame/record/record.h"

/// Calls f with every instrument channel that has a module in use, in ascending order.
template <class F> void ForScopesInUse(const Record& record, F&& f) {
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        if (record.ScopeInUse[ch]) {
            f(ch);
        }
    }
}

/// Calls f with every instrument channel that is in use and switched on: those that acquire.
template <class F> void ForAcquiringScopes(const Record& record, F&& f) {
    ForScopesInUse(record, [&](int ch) {
        if (record.ChannelOn[ch]) {
            f(ch);
        }
    });
}
