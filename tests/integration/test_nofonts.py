# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A device without fonts."""

import pytest

# Texts alone have hundreds of colours, from their smooth edges.
COLOURS_OF_TEXTS = 100

ASKED = 'Unable install package without confirm: The installation is not running in sdk mode. ' \
    'Silent software instalation is not allowed'


@pytest.fixture
def no_fonts(tmp_path):
    """A configuration of fontconfig that knows no fonts."""
    file = tmp_path / 'fonts.conf'
    file.write_text('<!DOCTYPE fontconfig SYSTEM "fonts.dtd"><fontconfig/>', encoding='ascii')
    return {'FONTCONFIG_FILE': str(file)}


def test_dialog_without_texts_can_be_answered(standins, program, client, signals, screen, no_fonts):
    """The log does not tell."""
    manager = standins.start('package-manager', installs='nothing')
    standins.start('developer-mode', 'mce')
    service = program.start(environment={**screen.environment(), **no_fonts})

    client.install(['/absent.rpm'])
    button = screen.wait_for_install_button()

    assert screen.colours() < COLOURS_OF_TEXTS
    screen.click(*button)
    assert signals.wait('installFinished') == (True, '')
    assert [call.arguments[0] for call in manager.calls('Install')] == ['/absent.rpm']
    assert service.log() == [f'warning default: "{ASKED}"']
