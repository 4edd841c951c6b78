# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that waits for the user."""

from support.idle import pass_time


def test_service_stays_while_the_dialog_is_on_screen(processes, service, client, signals, dialog):
    """And afterwards does what has been waiting."""
    dialog.use('Controlled')
    client.install(['/first.rpm'])
    dialog.wait_shown(1)
    client.install(['/second.rpm'])

    pass_time(processes, 33)

    service.barrier()
    assert signals.names() == ['needConfirm']
    dialog.answer('dismissed', number=1)
    assert dialog.wait_shown(2)['fileName'] == '/second.rpm'
