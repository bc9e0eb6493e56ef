// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/instance_bus.h"
#include "platform/linux/instance_lock.h"
#include "platform/linux/instance_socket.h"
#include "platform/single_instance.h"

#include <QString>

#include <chrono>
#include <optional>

namespace wrenfold {

/// The claim is a lock on the preferences folder; the session bus and a local socket carry the requests.
class LinuxSingleInstance : public SingleInstance
{
public:
    /// `patience` is how long ask() goes on asking: the running program may itself be starting.
    explicit LinuxSingleInstance(QString folder,
                                 std::chrono::milliseconds patience = std::chrono::seconds(5));

    [[nodiscard]] Claim claim() override;
    [[nodiscard]] std::optional<QString> ask(Request request) override;

    /// Does nothing without the claim: another program's socket could be in the place of ours.
    void listen(std::function<QString(Request request)> answer) override;

private:
    const QString m_folder;
    const std::chrono::milliseconds m_patience;
    InstanceLock m_lock;
    std::optional<InstanceSocket> m_socket; ///< This and the bus are there once it listens.
    std::optional<InstanceBus> m_bus;
};

} // namespace wrenfold
