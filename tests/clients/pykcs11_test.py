import sys

from client_test import HERE, PIN, compare_sessions


def session(place):
    place.run(sys.executable, str(HERE / "pykcs11_client.py"), place.module, PIN)


compare_sessions(
    session,
    expected=[
        'FINIInitialize CKR_OK {}',
    ],
)
