// SPDX-License-Identifier: MIT
#pragma once

namespace wrenfold {

/// The program's entry: runs a debug command, or the application until it is quit.
class WrenfoldMain
{
public:
    /// The process's exit status.
    static int main(int argc, char **argv);
};

} // namespace wrenfold
