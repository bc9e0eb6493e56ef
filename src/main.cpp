// SPDX-License-Identifier: MIT
#include "app/wrenfold_main.h"

int main(int argc, char **argv)
{
    return wrenfold::WrenfoldMain::main(argc, argv);
}
