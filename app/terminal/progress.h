/// A line on the terminal while a check takes long.
#pragma once

#include <chrono>
#include <string>

/// Writes to standard error, once a check has taken a second, and only to a terminal. Clears its
/// line when it goes.
class Progress {
  public:
    Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// Replaces the line; more often than ten times a second is no more to the eye.
    void show(const std::string& line);
    /// Takes the line away, for something else to be written.
    void clear();

  private:
    bool is_terminal_;
    bool is_shown_ = false;
    std::chrono::steady_clock::time_point next_;
};
