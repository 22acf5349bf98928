"""Gives OpenSSH's programs a PIN without a terminal."""

import os


def environment_answering(place, pin):
    """Returns the environment in which OpenSSH's programs take `pin` for the answer to every question."""
    program = place.write("askpass", f"#!/bin/sh\necho '{pin}'\n")
    os.chmod(program, 0o700)
    return {"SSH_ASKPASS": program, "SSH_ASKPASS_REQUIRE": "force", "DISPLAY": ":0"}
