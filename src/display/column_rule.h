#pragma once

/// Which samples of a trace are worth a line: the first of each pixel column and every new extreme of it.
/// It keeps all peaks and bounds the work by the width of the canvas.
class ColumnRule {
  public:
    /// column: never falls from call to call. Written without a branch, since noise makes the outcome
    /// unpredictable.
    bool Keep(int column, float value) {
        const bool fresh = column != last_;
        const bool above = fresh | (value > maximum_);
        const bool below = fresh | (value < minimum_);
        maximum_ = above ? value : maximum_;
        minimum_ = below ? value : minimum_;
        last_ = column;
        return above | below;
    }

  private:
    int last_ = -1;
    float maximum_ = 0;
    float minimum_ = 0;
};
