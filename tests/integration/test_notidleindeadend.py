# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service with a request that ends nowhere."""

from support.idle import pass_time


def test_service_stays(processes, service, client, signals, dialog):
    """Other requests that end do not change that."""
    dialog.remove()
    client.install(['/stuck.rpm'])
    client.install([])

    pass_time(processes, 33)

    service.barrier()
    assert signals.names() == ['needConfirm', 'installFinished']
