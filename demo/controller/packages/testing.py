"""The password of the component with preliminary versions."""

import hashlib
import hmac
from typing import Final

_SALT: Final = b"kubelor-demo"
#: What README.md tells is not told here: only who knows the password can make this of it.
_DERIVED: Final = bytes.fromhex("43be036c03caed7bbe3c08bec77482a3913a45bd58e65d68f13d04e44c9d22b4")


def fits(password: str) -> bool:
    """Whether this is the password. Takes some ten milliseconds, so that guessing takes long."""
    return hmac.compare_digest(_derived(password), _DERIVED)


def _derived(password: str) -> bytes:
    # Text from the screens may hold halves of characters, which no encoding takes by itself.
    given = password.encode("utf-8", "surrogatepass")
    return hashlib.scrypt(given, salt=_SALT, n=2**13, r=8, p=1, dklen=32)
